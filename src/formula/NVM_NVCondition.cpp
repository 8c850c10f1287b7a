#include <norvane/formula/NVM_NVCondition.h>
#include <norvane/formula/TextInput.h>
#include <norvane/platform/Platform.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/platform/Url.h>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace norvane {
namespace {

std::string localized(std::string_view key, const std::vector<std::string>& arguments = {}) {
    return Platform::current().strings->format(key, arguments);
}

/// A rule without a memory of its own.
std::shared_ptr<NVM_NVCondition> condition(std::string description, EvaluationHints hint,
                                           std::function<bool(const std::string&)> rule) {
    return std::make_shared<NVM_NVCondition>(
        std::move(description), hint,
        [rule = std::move(rule)](NVM_NVCondition&, const std::string& text) { return rule(text); });
}

bool isAlphanumeric(const std::string& text) {
    constexpr std::uint32_t kAllowed = U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK;
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t index = 0; index < size;) {
        UChar32 character = 0;
        U8_NEXT(text.data(), index, size, character);
        if (character < 0 || (U_GET_GC_MASK(character) & kAllowed) == 0) return false;
    }
    return true;
}

} // namespace

NVM_NVCondition::NVM_NVCondition(std::string description, EvaluationHints hint, EvaluationBlock block)
    : localizedDescription(std::move(description))
    , evaluationHint(hint)
    , evaluationBlock(std::move(block)) {}

bool NVM_NVCondition::isSatisfiedBy(const std::string& text) {
    return !evaluationBlock || evaluationBlock(*this, text);
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::notBlankCondition() {
    return condition(localized("Text.Validation.MustContainCharacters"), kCheckWhileEditing,
                     [](const std::string& text) { return !trimmed(text).empty(); });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::conditionWithMinLength(std::size_t length) {
    return condition(localized("Must contain at least %d characters", {std::to_string(length)}), 0,
                     [length](const std::string& text) { return codePointLength(text) >= length; });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::conditionWithMaxLength(std::size_t length) {
    // Deliberate: the text says "less than", the rule allows that many.
    return condition(localized("Must be less than %d characters", {std::to_string(length)}),
                     kCheckWhileEditing | kCheckKeystroke,
                     [length](const std::string& text) { return codePointLength(text) <= length; });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::noSpacesCondition() {
    return condition(localized("Must not contain space(s)"), kCheckWhileEditing,
                     [](const std::string& text) { return text.find(' ') == std::string::npos; });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::validURLCondition() {
    return condition(localized("Must be a valid URL"), kCheckWhileEditing,
                     [](const std::string& text) { return Url::parse(text).has_value(); });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::alphanumericCondition() {
    return condition(localized("Must only contain letters and numbers"), kCheckWhileEditing, isAlphanumeric);
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::nvm_validCharactersCondition() {
    return std::make_shared<NVM_NVCondition>(
        std::string(), kCheckWhileEditing, [](NVM_NVCondition& rule, const std::string& text) {
            for (const char* offending : {"<", ">", "&#"}) {
                if (text.find(offending) == std::string::npos) continue;
                rule.localizedDescription = localized("Account.MustNotContainString", {offending});
                return false;
            }
            return true;
        });
}

std::shared_ptr<NVM_NVCondition> NVM_NVCondition::nvm_validEmailCondition() {
    return condition(localized("Account.Error.InvalidEmail"), 0,
                     [](const std::string& text) { return nvm_stringIsValidEmail(trimmed(text)); });
}

NVM_NVFieldTextCondition::NVM_NVFieldTextCondition(std::string description,
                                                   std::shared_ptr<const TextInput> field)
    : NVM_NVCondition(std::move(description))
    , referenceField(std::move(field)) {}

bool NVM_NVMatchesFieldTextCondition::isSatisfiedBy(const std::string& text) {
    return referenceField && text == referenceField->text();
}

bool NVM_NVStartsWithFieldTextCondition::isSatisfiedBy(const std::string& text) {
    return referenceField && referenceField->text().starts_with(text);
}

} // namespace norvane
