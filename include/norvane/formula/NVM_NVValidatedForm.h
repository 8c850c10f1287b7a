#pragma once

#include <norvane/formula/NVM_NVValidatedFormDelegate.h>
#include <norvane/formula/NVM_NVValidatedTextField.h>
#include <norvane/formula/PopTip.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// Watches text fields: refuses keystrokes that break a rule of hint 2, and shows the first rule that a text
/// breaks in a tip that points at the field. One tip at a time. Main queue; the delegate may call back into
/// the form from every callback.
class NVM_NVValidatedForm : public TextFieldDelegate,
                            public std::enable_shared_from_this<NVM_NVValidatedForm> {
  public:
    using TextFields = std::vector<Field>;

    /// The delegate is held weakly; it may be null.
    static std::shared_ptr<NVM_NVValidatedForm>
    withTextFields(TextFields textFields, std::weak_ptr<NVM_NVValidatedFormDelegate> delegate,
                   PopTipMaker makePopTip);

    std::weak_ptr<NVM_NVValidatedFormDelegate> delegate;

    const TextFields& textFields() const { return textFields_; }
    /// Makes the form the delegate of each field, and of the fields before no longer.
    void setTextFields(TextFields textFields);
    /// Fields that the form has already are passed over.
    void addTextFields(const TextFields& textFields);
    /// The tip of a field that goes is dismissed.
    void removeTextFields(const TextFields& textFields);

    /// The fields whose full check fails, in order.
    TextFields violatedTextFields() const;
    bool isValid() const { return violatedTextFields().empty(); }

    /// The tip that is shown, or null.
    const std::shared_ptr<PopTipView>& popTipView() const { return popTipView_; }
    /// The field that is flagged, or null. The delegate may have refused its tip.
    const Field& currentlyViolatedTextField() const { return violatedField_; }
    bool isDisplayingViolation() const { return popTipView_ != nullptr; }
    /// Where the flagged field's tip points and lies: the delegate's choice, else the field and its parent.
    /// Null without a flagged field.
    std::shared_ptr<ViewAnchor> targetViewForPopTip();
    std::shared_ptr<ViewAnchor> superViewForPopTip();

    /// Shows the tip of the first violated field, unless one is shown.
    void displayFirstViolation();
    void showViolationForTextField(Field textField);
    /// Flags the field and shows the first rule that the text breaks; nothing when it breaks none.
    void showViolationForTextField(Field textField, const std::string& withText);
    /// Nothing, and no call of the delegate, unless a tip is shown.
    void hideViolationForTextField(Field textField);
    /// Takes the tip away and forgets the flagged field, without asking or telling the delegate.
    void dismissViolation() { dismissViolationAnimated(true); }
    void dismissViolationAnimated(bool animated);
    /// Shows a new default tip in place of one that is shown.
    void presentViolation(const std::string& message, const std::shared_ptr<ViewAnchor>& fromView,
                          const std::shared_ptr<ViewAnchor>& inView, bool animated);
    std::shared_ptr<PopTipView> defaultPopTipWithMessage(const std::string& message) const;

    void textFieldDidBeginEditing(const Field& textField) override;
    bool textFieldShouldChangeCharactersInRange(const Field& textField, TextRange range,
                                                const std::string& replacementString) override;
    void textFieldDidEndEditing(const Field& textField) override;
    bool textFieldShouldClear(const Field& textField) override;
    bool textFieldShouldReturn(const Field& textField) override;

  private:
    explicit NVM_NVValidatedForm(PopTipMaker makePopTip);
    void updateViolation(const Field& textField, const std::string& text);
    void tipWasDismissedByUser(const PopTipView* tip);
    void leave(const Field& textField);

    PopTipMaker makePopTip_;
    TextFields textFields_;
    std::shared_ptr<PopTipView> popTipView_;
    Field violatedField_;
};

} // namespace norvane
