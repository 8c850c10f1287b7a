#include <norvane/formula/NVM_NVValidatedTextField.h>

namespace norvane {

NVM_NVValidator::Conditions NVM_NVValidatedTextField::conditionsViolated() const {
    return validator ? validator->conditionsViolatedByText(text()) : NVM_NVValidator::Conditions();
}

bool NVM_NVValidatedTextField::isValid() const { return conditionsViolated().empty(); }

std::optional<std::string> NVM_NVValidatedTextField::descriptionOfFirstConditionViolated() const {
    return validator ? validator->descriptionOfFirstConditionViolatedByText(text()) : std::nullopt;
}

} // namespace norvane
