#pragma once

#include <norvane/formula/NVM_NVValidatedTextField.h>

#include <memory>

namespace norvane {

/// A cell of a table that holds a validated text field; screens derive theirs.
class NVM_NVValidatedTextFieldCell {
  public:
    virtual ~NVM_NVValidatedTextFieldCell() = default;
    /// Never null.
    virtual std::shared_ptr<NVM_NVValidatedTextField> validatedTextField() const = 0;
};

} // namespace norvane
