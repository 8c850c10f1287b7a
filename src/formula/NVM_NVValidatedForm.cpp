#include <norvane/formula/NVM_NVValidatedForm.h>
#include <norvane/platform/TextCompare.h>

#include <algorithm>
#include <utility>

namespace norvane {
namespace {

using Field = TextFieldDelegate::Field;

bool breaksRule(const Field& field, const std::string& text, EvaluationHints hints) {
    return field->validator && !field->validator->isValidText(text, hints);
}

bool contains(const NVM_NVValidatedForm::TextFields& fields, const Field& field) {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
}

/// What reaches beyond the text is cut.
std::string replaced(const std::string& text, TextRange range, const std::string& replacement) {
    const std::size_t begin = codePointOffset(text, range.location);
    const std::size_t end = begin + codePointOffset(std::string_view(text).substr(begin), range.length);
    return text.substr(0, begin) + replacement + text.substr(end);
}

} // namespace

NVM_NVValidatedForm::NVM_NVValidatedForm(PopTipMaker makePopTip)
    : makePopTip_(std::move(makePopTip)) {}

std::shared_ptr<NVM_NVValidatedForm> NVM_NVValidatedForm::withTextFields(
    TextFields textFields, std::weak_ptr<NVM_NVValidatedFormDelegate> formDelegate, PopTipMaker makePopTip) {
    const std::shared_ptr<NVM_NVValidatedForm> form(new NVM_NVValidatedForm(std::move(makePopTip)));
    form->delegate = std::move(formDelegate);
    form->setTextFields(std::move(textFields));
    return form;
}

void NVM_NVValidatedForm::setTextFields(TextFields textFields) {
    for (const Field& field : TextFields(textFields_))
        if (!contains(textFields, field)) leave(field);
    textFields_ = std::move(textFields);
    for (const Field& field : textFields_)
        field->delegate = weak_from_this();
}

void NVM_NVValidatedForm::addTextFields(const TextFields& textFields) {
    TextFields all = textFields_;
    std::copy_if(textFields.begin(), textFields.end(), std::back_inserter(all),
                 [&](const Field& field) { return !contains(textFields_, field); });
    setTextFields(std::move(all));
}

void NVM_NVValidatedForm::removeTextFields(const TextFields& textFields) {
    TextFields left = textFields_;
    std::erase_if(left, [&](const Field& field) { return contains(textFields, field); });
    setTextFields(std::move(left));
}

void NVM_NVValidatedForm::leave(const Field& textField) {
    if (textField->delegate.lock().get() == this) textField->delegate.reset();
    if (textField == violatedField_) dismissViolation();
}

NVM_NVValidatedForm::TextFields NVM_NVValidatedForm::violatedTextFields() const {
    TextFields violated;
    std::copy_if(textFields_.begin(), textFields_.end(), std::back_inserter(violated),
                 [](const Field& field) { return !field->isValid(); });
    return violated;
}

std::shared_ptr<ViewAnchor> NVM_NVValidatedForm::targetViewForPopTip() {
    if (!violatedField_) return nullptr;
    const Field field = violatedField_;
    std::shared_ptr<ViewAnchor> view;
    if (const auto owner = delegate.lock())
        view = owner->validatedFormTargetViewForViolatedTextField(*this, field);
    return view ? view : field->view();
}

std::shared_ptr<ViewAnchor> NVM_NVValidatedForm::superViewForPopTip() {
    if (!violatedField_) return nullptr;
    const Field field = violatedField_;
    std::shared_ptr<ViewAnchor> view;
    if (const auto owner = delegate.lock())
        view = owner->validatedFormSuperViewForViolatedTextField(*this, field);
    return view ? view : field->superView();
}

void NVM_NVValidatedForm::displayFirstViolation() {
    if (isDisplayingViolation()) return;
    const TextFields violated = violatedTextFields();
    if (!violated.empty()) showViolationForTextField(violated.front());
}

void NVM_NVValidatedForm::showViolationForTextField(Field textField) {
    const std::string text = textField->text();
    showViolationForTextField(std::move(textField), text);
}

void NVM_NVValidatedForm::showViolationForTextField(Field textField, const std::string& withText) {
    const auto message = textField->validator
                             ? textField->validator->descriptionOfFirstConditionViolatedByText(withText)
                             : std::nullopt;
    if (!message) return;
    if (popTipView_ && violatedField_ && violatedField_ != textField)
        hideViolationForTextField(violatedField_);
    violatedField_ = textField;
    const auto owner = delegate.lock();
    if (owner && !owner->validatedFormShouldShowViolationForTextField(*this, textField).value_or(true))
        return;
    const auto target = targetViewForPopTip();
    const auto superView = superViewForPopTip();
    if (violatedField_ != textField) return; // The delegate had other plans meanwhile.
    if (!popTipView_)
        presentViolation(*message, target, superView, true);
    else if (popTipView_->message() != *message)
        popTipView_->setMessage(*message);
    if (owner) owner->validatedFormDidShowViolationForTextField(*this, textField);
}

void NVM_NVValidatedForm::hideViolationForTextField(Field textField) {
    if (!popTipView_) return;
    const auto owner = delegate.lock();
    if (owner && !owner->validatedFormShouldHideViolationForTextField(*this, textField).value_or(true))
        return;
    dismissViolation();
    if (owner) owner->validatedFormDidHideViolationForTextField(*this, textField);
}

void NVM_NVValidatedForm::dismissViolationAnimated(bool animated) {
    const auto tip = std::exchange(popTipView_, nullptr);
    violatedField_.reset();
    if (tip) tip->dismissAnimated(animated);
}

void NVM_NVValidatedForm::presentViolation(const std::string& message,
                                           const std::shared_ptr<ViewAnchor>& fromView,
                                           const std::shared_ptr<ViewAnchor>& inView, bool animated) {
    const auto tip = defaultPopTipWithMessage(message);
    tip->onDismissedByUser([weak = weak_from_this(), shown = tip.get()] {
        if (const auto form = weak.lock()) form->tipWasDismissedByUser(shown);
    });
    if (const auto before = std::exchange(popTipView_, tip)) before->dismissAnimated(animated);
    tip->presentPointingAtView(fromView, inView, animated);
}

std::shared_ptr<PopTipView> NVM_NVValidatedForm::defaultPopTipWithMessage(const std::string& message) const {
    return makePopTip_(message, PopTipLook());
}

void NVM_NVValidatedForm::tipWasDismissedByUser(const PopTipView* tip) {
    if (tip != popTipView_.get()) return;
    const auto held = std::exchange(popTipView_, nullptr);
    const Field field = std::exchange(violatedField_, nullptr);
    const auto owner = delegate.lock();
    if (owner && field) owner->validatedFormDidHideViolationForTextField(*this, field);
}

void NVM_NVValidatedForm::textFieldDidBeginEditing(const Field& textField) {
    const std::string text = textField->text();
    if (!text.empty() && breaksRule(textField, text, kCheckWhileEditing))
        showViolationForTextField(textField, text);
    if (const auto owner = delegate.lock()) owner->textFieldDidBeginEditing(textField);
}

bool NVM_NVValidatedForm::textFieldShouldChangeCharactersInRange(const Field& textField, TextRange range,
                                                                 const std::string& replacementString) {
    const std::string text = replaced(textField->text(), range, replacementString);
    updateViolation(textField, text);
    const auto owner = delegate.lock();
    const auto answer =
        owner ? owner->textFieldShouldChangeCharactersInRange(textField, range, replacementString)
              : std::nullopt;
    return answer.value_or(!breaksRule(textField, text, kCheckKeystroke));
}

/// After a change the tip says what is wrong with the new text, or goes.
void NVM_NVValidatedForm::updateViolation(const Field& textField, const std::string& text) {
    if (popTipView_ && breaksRule(textField, text, kCheckWhileEditing)) {
        showViolationForTextField(textField, text);
    } else if (textField == violatedField_) {
        if (breaksRule(textField, text, 0))
            showViolationForTextField(textField, text);
        else
            hideViolationForTextField(textField);
    }
}

void NVM_NVValidatedForm::textFieldDidEndEditing(const Field& textField) {
    if (const auto owner = delegate.lock()) owner->textFieldDidEndEditing(textField);
}

bool NVM_NVValidatedForm::textFieldShouldClear(const Field& textField) {
    if (textField == violatedField_) hideViolationForTextField(textField);
    const auto owner = delegate.lock();
    return owner ? owner->textFieldShouldClear(textField).value_or(true) : true;
}

bool NVM_NVValidatedForm::textFieldShouldReturn(const Field& textField) {
    if (!popTipView_ && !textField->isValid()) showViolationForTextField(textField);
    const auto owner = delegate.lock();
    return owner ? owner->textFieldShouldReturn(textField).value_or(true) : true;
}

} // namespace norvane
