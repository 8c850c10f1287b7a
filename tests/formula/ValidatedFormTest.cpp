#include "tests/support/KitFixture.h"

#include <norvane/formula/NVM_NVValidatedForm.h>

namespace norvane {
namespace {

using Calls = std::vector<std::string>;

struct FakeField : NVM_NVValidatedTextField {
    explicit FakeField(std::string fieldName, std::shared_ptr<NVM_NVValidator> rules)
        : name(std::move(fieldName)) {
        validator = std::move(rules);
    }
    std::string text() const override { return typed; }
    std::shared_ptr<ViewAnchor> view() const override { return own; }
    std::shared_ptr<ViewAnchor> superView() const override { return parent; }

    std::string name;
    std::string typed;
    std::shared_ptr<ViewAnchor> own = std::make_shared<ViewAnchor>();
    std::shared_ptr<ViewAnchor> parent = std::make_shared<ViewAnchor>();
};

struct RecordingTip : PopTipView {
    std::string message() const override { return shown; }
    void setMessage(const std::string& message) override { shown = message; }
    void presentPointingAtView(const std::shared_ptr<ViewAnchor>& at, const std::shared_ptr<ViewAnchor>& in,
                               bool) override {
        target = at;
        superView = in;
    }
    void dismissAnimated(bool) override { isDismissed = true; }
    void onDismissedByUser(std::function<void()> handler) override { dismissByUser = std::move(handler); }

    std::string shown;
    std::shared_ptr<ViewAnchor> target;
    std::shared_ptr<ViewAnchor> superView;
    bool isDismissed = false;
    std::function<void()> dismissByUser;
};

struct RecordingDelegate : NVM_NVValidatedFormDelegate {
    static std::string nameOf(const Field& field) { return static_cast<FakeField&>(*field).name; }

    std::optional<bool> validatedFormShouldShowViolationForTextField(Form&, const Field&) override {
        return mayShow;
    }
    std::shared_ptr<ViewAnchor> validatedFormTargetViewForViolatedTextField(Form&, const Field&) override {
        return target;
    }
    void validatedFormDidShowViolationForTextField(Form&, const Field& field) override {
        calls.push_back("show " + nameOf(field));
    }
    std::optional<bool> validatedFormShouldHideViolationForTextField(Form&, const Field& field) override {
        calls.push_back("hide? " + nameOf(field));
        return mayHide;
    }
    void validatedFormDidHideViolationForTextField(Form&, const Field& field) override {
        calls.push_back("hidden " + nameOf(field));
    }
    std::optional<bool> textFieldShouldChangeCharactersInRange(const Field&, TextRange,
                                                               const std::string&) override {
        return mayChange;
    }
    std::optional<bool> textFieldShouldReturn(const Field&) override { return mayReturn; }

    Calls taken() { return std::exchange(calls, {}); }

    std::optional<bool> mayShow, mayHide, mayChange, mayReturn;
    std::shared_ptr<ViewAnchor> target;
    Calls calls;
};

class ValidatedForm : public KitFixture {
  protected:
    void SetUp() override {
        KitFixture::SetUp();
        name_ = std::make_shared<FakeField>("name", NVM_NVValidator::nvm_nameValidator());
        email_ = std::make_shared<FakeField>("email", NVM_NVValidator::nvm_emailValidator());
        form_ = NVM_NVValidatedForm::withTextFields({name_, email_}, delegate_,
                                                    [this](const std::string& message, const PopTipLook&) {
                                                        tips_.push_back(std::make_shared<RecordingTip>());
                                                        tips_.back()->shown = message;
                                                        return tips_.back();
                                                    });
    }
    bool type(FakeField& field, const std::string& text, TextRange range) {
        const auto shared = std::static_pointer_cast<FakeField>(&field == name_.get() ? name_ : email_);
        return field.delegate.lock()->textFieldShouldChangeCharactersInRange(shared, range, text);
    }
    std::string tip() const { return form_->popTipView() ? form_->popTipView()->message() : "none"; }
    const RecordingTip& lastTip() const { return *tips_.back(); }

    std::shared_ptr<FakeField> name_;
    std::shared_ptr<FakeField> email_;
    std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
    std::vector<std::shared_ptr<RecordingTip>> tips_;
    std::shared_ptr<NVM_NVValidatedForm> form_;
};

TEST_F(ValidatedForm, RefusesKeystrokesThatLeaveATextTooLong) {
    name_->typed = std::string(99, 'x') + "é";
    EXPECT_FALSE(type(*name_, "é", {50, 0}));
    EXPECT_TRUE(type(*name_, "é", {99, 1})) << "one for another";
    EXPECT_TRUE(type(*name_, "", {0, 100})) << "a blank name is wrong, but not at a keystroke";
    name_->typed = std::string(102, 'x');
    EXPECT_FALSE(type(*name_, "", {101, 1})) << "shorter, yet too long";
    EXPECT_TRUE(type(*name_, "", {1, 1000})) << "a range beyond the text ends with it";
    delegate_->mayChange = true;
    EXPECT_TRUE(type(*name_, "y", {0, 0})) << "the delegate decides";
    delegate_->mayChange = false;
    EXPECT_FALSE(type(*name_, "", {0, 100}));
    EXPECT_EQ(tip(), "none");
}

TEST_F(ValidatedForm, TheTipFollowsTheTypingAndGoesWithTheFault) {
    name_->typed = "a<b";
    name_->delegate.lock()->textFieldDidBeginEditing(name_);
    EXPECT_EQ(tip(), "Must not contain <");
    EXPECT_EQ(lastTip().target, name_->own);
    EXPECT_EQ(lastTip().superView, name_->parent);
    EXPECT_TRUE(type(*name_, ">", {1, 1}));
    EXPECT_EQ(tip(), "Must not contain >") << "the text is replaced";
    EXPECT_EQ(tips_.size(), 1u);
    EXPECT_EQ(delegate_->taken(), (Calls{"show name", "show name"}));
    delegate_->mayHide = false;
    EXPECT_TRUE(type(*name_, "", {1, 1}));
    EXPECT_TRUE(form_->isDisplayingViolation());
    delegate_->mayHide.reset();
    EXPECT_TRUE(type(*name_, "", {1, 1}));
    EXPECT_EQ(tip(), "none");
    EXPECT_TRUE(lastTip().isDismissed);
    EXPECT_EQ(form_->currentlyViolatedTextField(), nullptr);
    EXPECT_EQ(delegate_->taken(), (Calls{"hide? name", "hide? name", "hidden name"}));
    form_->hideViolationForTextField(name_);
    EXPECT_EQ(delegate_->taken(), Calls()) << "nothing is shown";
}

TEST_F(ValidatedForm, OneTipAtATime) {
    delegate_->target = std::make_shared<ViewAnchor>();
    EXPECT_TRUE(email_->delegate.lock()->textFieldShouldReturn(email_));
    EXPECT_EQ(tip(), "Must be a valid email address");
    EXPECT_EQ(lastTip().target, delegate_->target);
    EXPECT_TRUE(name_->delegate.lock()->textFieldShouldReturn(name_)) << "a tip is shown: no other";
    EXPECT_EQ(form_->currentlyViolatedTextField(), email_);
    form_->showViolationForTextField(name_);
    EXPECT_EQ(delegate_->taken(), (Calls{"show email", "hide? email", "hidden email", "show name"}));
    EXPECT_TRUE(tips_.front()->isDismissed);
    EXPECT_EQ(form_->violatedTextFields(), (NVM_NVValidatedForm::TextFields{name_, email_}));
    tips_.front()->dismissByUser();
    EXPECT_TRUE(form_->isDisplayingViolation()) << "that tip is gone already";
    tips_.back()->dismissByUser();
    EXPECT_EQ(delegate_->taken(), Calls{"hidden name"});
    EXPECT_EQ(form_->currentlyViolatedTextField(), nullptr);
}

TEST_F(ValidatedForm, ARefusedTipStillFlagsItsField) {
    delegate_->mayShow = false;
    form_->displayFirstViolation();
    EXPECT_EQ(tip(), "none");
    EXPECT_EQ(form_->currentlyViolatedTextField(), name_);
    delegate_->mayShow.reset();
    EXPECT_TRUE(type(*name_, " ", {0, 0})) << "flagged, so the full check shows it";
    EXPECT_EQ(tip(), "Must contain at least one character");
    EXPECT_TRUE(name_->delegate.lock()->textFieldShouldClear(name_));
    EXPECT_EQ(tip(), "none");
    name_->typed = "Ann";
    form_->showViolationForTextField(name_);
    EXPECT_EQ(tip(), "none") << "nothing is wrong with it";
}

TEST_F(ValidatedForm, FieldsThatLeaveTakeTheirTipAlong) {
    form_->displayFirstViolation();
    form_->removeTextFields({name_});
    EXPECT_FALSE(form_->isDisplayingViolation());
    EXPECT_TRUE(name_->delegate.expired());
    form_->addTextFields({name_, email_});
    EXPECT_EQ(form_->textFields(), (NVM_NVValidatedForm::TextFields{email_, name_}));
    name_->typed = "Ann";
    email_->typed = " Ann@Example.com";
    EXPECT_TRUE(form_->isValid());
}

} // namespace
} // namespace norvane
