#pragma once

#include <norvane/formula/NVM_NVValidatedTextField.h>

#include <memory>
#include <optional>
#include <string>

namespace norvane {

class NVM_NVValidatedForm;

/// What a form asks and tells its owner. Every call may be left out: the default answers with nothing, and
/// the form decides; an answer that is given wins. Main queue.
class NVM_NVValidatedFormDelegate {
  public:
    using Form = NVM_NVValidatedForm;
    using Field = std::shared_ptr<NVM_NVValidatedTextField>;

    virtual ~NVM_NVValidatedFormDelegate() = default;

    virtual std::optional<bool> validatedFormShouldShowViolationForTextField(Form&, const Field&) {
        return std::nullopt;
    }
    virtual std::shared_ptr<ViewAnchor> validatedFormTargetViewForViolatedTextField(Form&, const Field&) {
        return nullptr;
    }
    virtual std::shared_ptr<ViewAnchor> validatedFormSuperViewForViolatedTextField(Form&, const Field&) {
        return nullptr;
    }
    virtual void validatedFormDidShowViolationForTextField(Form&, const Field&) {}
    virtual std::optional<bool> validatedFormShouldHideViolationForTextField(Form&, const Field&) {
        return std::nullopt;
    }
    virtual void validatedFormDidHideViolationForTextField(Form&, const Field&) {}

    // What the form hears of its fields is passed on, after it has shown or hidden its tip.

    virtual void textFieldDidBeginEditing(const Field&) {}
    virtual std::optional<bool> textFieldShouldChangeCharactersInRange(const Field&, TextRange,
                                                                       const std::string&) {
        return std::nullopt;
    }
    virtual void textFieldDidEndEditing(const Field&) {}
    virtual std::optional<bool> textFieldShouldClear(const Field&) { return std::nullopt; }
    virtual std::optional<bool> textFieldShouldReturn(const Field&) { return std::nullopt; }
};

} // namespace norvane
