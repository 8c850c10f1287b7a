#pragma once

#include "tests/support/SandboxKitFixture.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMInPersonSigner.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/NativeSigningView.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// A screen that remembers what it was told. Main queue only.
class RecordingSigningView final : public NativeSigningView {
  public:
    void showTitle(const std::string& title) override { titles.push_back(title); }
    void showFinishButton(const std::string& title, bool enabled) override {
        finishButton = title + (enabled ? "" : " (off)");
    }
    void showPoweredBy(const std::string& label, bool) override { poweredBy = label; }
    void showSigners(const std::vector<std::shared_ptr<NVMRecipient>>& signers) override {
        offered = signers;
        chooser.set();
    }
    void showConsumerDisclosure(const ConsumerDisclosure& shown) override {
        disclosures.push_back(shown);
        disclosure.set();
    }
    void beginSigning(const std::shared_ptr<NVMRecipient>& recipient) override {
        begun.push_back(recipient->nvm_name());
        signing.set();
    }
    void showSignatureCapture(bool initials) override { captures.push_back(initials); }
    void showTextEditor(const std::shared_ptr<NVMPDFBaseAnnotation>&, const std::string& text) override {
        editors.push_back(text);
    }
    void endEditing() override {}
    void scrollTo(int pageNumber, double originY) override { scrolls.push_back({pageNumber, originY}); }
    void updateAnnotation(const PdfAnnotation&, std::size_t) override {}
    void dismissPresented() override {}
    void close() override { ++closed; }

    std::vector<std::string> titles;
    std::string finishButton;
    std::string poweredBy;
    std::vector<std::shared_ptr<NVMRecipient>> offered;
    std::vector<ConsumerDisclosure> disclosures;
    std::vector<std::string> begun;
    std::vector<bool> captures;
    std::vector<std::string> editors;
    std::vector<std::pair<int, double>> scrolls;
    int closed = 0;
    Event chooser;
    Event disclosure;
    Event signing;
};

/// A cached template of the sandbox on the offline signing screen, whose user is the test.
class SigningFlowFixture : public SandboxKitFixture {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// An envelope of the template, whose in-person signers are hosted by the signed-in user and bear the
    /// names.
    void use(const char* templateId, const std::vector<std::string>& names);
    /// Opens the screen.
    void begin();
    /// Waits for the disclosure that a guest gets, and agrees.
    void consent();
    void waitForTurn() { ASSERT_TRUE(view_->signing.wait(++turns_)); }
    /// Fills in everything that the current signer must.
    void fillIn();
    /// Taps finish and confirms, when nothing is missing.
    void finishTurn();
    /// A guest's whole turn, after the device was passed on.
    void signTurn();
    void hideAlerts();

    void onMain(const std::function<void(NVMNativeSigningViewController&)>& work);
    std::shared_ptr<NVMTab> tab(const std::string& label) const;
    std::vector<std::shared_ptr<NVMInPersonSigner>>& signers() {
        return *envelope_->recipients->inPersonSigners;
    }
    /// How the signing ended: the transaction id, or "error " and its reason.
    std::string outcome();
    /// The names of the notifications of signing and caching so far.
    std::vector<std::string> told() const;

    std::shared_ptr<NVMEnvelopeDefinition> envelope_;
    std::shared_ptr<RecordingSigningView> view_ = std::make_shared<RecordingSigningView>();
    std::shared_ptr<NVMNativeSigningViewController> controller_;
    std::vector<Notification> notifications_;

  private:
    std::shared_ptr<void> observer_;
    mutable std::mutex mutex_; ///< guards `notifications_`
    Event ended_;
    std::string outcome_;
    int turns_ = 0;
    int disclosed_ = 0;
};

} // namespace norvane
