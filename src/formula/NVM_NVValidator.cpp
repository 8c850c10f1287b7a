#include <norvane/formula/NVM_NVValidator.h>
#include <norvane/platform/Platform.h>

namespace norvane {
namespace {

constexpr std::size_t kPasswordMinLength = 6;
constexpr std::size_t kMaxLength = 100;

} // namespace

NVM_NVValidator::NVM_NVValidator(Conditions conditions)
    : conditions_(std::move(conditions)) {}

NVM_NVValidator::Conditions NVM_NVValidator::conditionsViolatedByText(const std::string& text,
                                                                      EvaluationHints evaluationHints) const {
    Conditions violated;
    for (const auto& condition : conditions_) {
        const bool asked = evaluationHints == 0 || (condition->evaluationHint & evaluationHints) != 0;
        if (asked && !condition->isSatisfiedBy(text)) violated.push_back(condition);
    }
    return violated;
}

bool NVM_NVValidator::isValidText(const std::string& text, EvaluationHints evaluationHints) const {
    return conditionsViolatedByText(text, evaluationHints).empty();
}

std::optional<std::string>
NVM_NVValidator::descriptionOfFirstConditionViolatedByText(const std::string& text,
                                                           EvaluationHints evaluationHints) const {
    const auto violated = conditionsViolatedByText(text, evaluationHints);
    if (violated.empty()) return std::nullopt;
    return violated.front()->localizedDescription;
}

std::shared_ptr<NVM_NVValidator> NVM_NVValidator::nvm_createPasswordValidator() {
    return std::make_shared<NVM_NVValidator>(
        Conditions{NVM_NVCondition::noSpacesCondition(), NVM_NVCondition::nvm_validCharactersCondition(),
                   NVM_NVCondition::conditionWithMinLength(kPasswordMinLength)});
}

std::shared_ptr<NVM_NVValidator>
NVM_NVValidator::nvm_confirmPasswordAgainstTextFieldValidator(std::shared_ptr<const TextInput> field) {
    const std::string description = Platform::current().strings->text("Account.Error.MustMatchNewPassword");
    auto startsWith = std::make_shared<NVM_NVStartsWithFieldTextCondition>(description, field);
    auto matches = std::make_shared<NVM_NVMatchesFieldTextCondition>(description, std::move(field));
    matches->evaluationHint = 0;
    return std::make_shared<NVM_NVValidator>(Conditions{std::move(startsWith), std::move(matches)});
}

std::shared_ptr<NVM_NVValidator> NVM_NVValidator::nvm_nameValidator() {
    return std::make_shared<NVM_NVValidator>(Conditions{NVM_NVCondition::notBlankCondition(),
                                                        NVM_NVCondition::nvm_validCharactersCondition(),
                                                        NVM_NVCondition::conditionWithMaxLength(kMaxLength)});
}

std::shared_ptr<NVM_NVValidator> NVM_NVValidator::nvm_emailValidator() {
    return std::make_shared<NVM_NVValidator>(Conditions{NVM_NVCondition::nvm_validCharactersCondition(),
                                                        NVM_NVCondition::nvm_validEmailCondition(),
                                                        NVM_NVCondition::conditionWithMaxLength(kMaxLength)});
}

std::shared_ptr<NVM_NVValidator> NVM_NVValidator::nvm_emailSubjectValidator() { return nvm_nameValidator(); }

} // namespace norvane
