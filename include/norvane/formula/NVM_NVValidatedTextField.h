#pragma once

#include <norvane/formula/NVM_NVValidator.h>
#include <norvane/formula/PopTip.h>
#include <norvane/formula/TextInput.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

class NVM_NVValidatedTextField;

/// Characters of a text, counted as code points.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;
};

/// Hears of a text field what the user does to it. Main queue.
class TextFieldDelegate {
  public:
    using Field = std::shared_ptr<NVM_NVValidatedTextField>;

    virtual ~TextFieldDelegate() = default;
    virtual void textFieldDidBeginEditing(const Field& textField) = 0;
    /// Asked before every change; false refuses it. The field still holds the text as it was.
    virtual bool textFieldShouldChangeCharactersInRange(const Field& textField, TextRange range,
                                                        const std::string& replacementString) = 0;
    virtual void textFieldDidEndEditing(const Field& textField) = 0;
    virtual bool textFieldShouldClear(const Field& textField) = 0;
    virtual bool textFieldShouldReturn(const Field& textField) = 0;
};

/// A text field with rules. Screens derive theirs, give its text and view, and tell the delegate what the
/// user does. Main queue.
class NVM_NVValidatedTextField : public TextInput {
  public:
    /// Without one every text is valid.
    std::shared_ptr<NVM_NVValidator> validator;
    std::weak_ptr<TextFieldDelegate> delegate;

    /// The field as a view, and the view that it lies in.
    virtual std::shared_ptr<ViewAnchor> view() const = 0;
    virtual std::shared_ptr<ViewAnchor> superView() const = 0;

    // Full checks of the current text.

    NVM_NVValidator::Conditions conditionsViolated() const;
    bool isValid() const;
    std::optional<std::string> descriptionOfFirstConditionViolated() const;
};

} // namespace norvane
