#pragma once

#include "SigningScript.h"

#include <norvane/platform/Result.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/NativeSigningView.h>

#include <memory>
#include <optional>
#include <string>

namespace norvane::cli {

/// Stands for the people at the screen: fills in what the script says when each signer's turn comes, taps the
/// places to sign, and finishes. What does not fit the envelope ends the signing, with the reason in
/// `failure`. Main queue only.
class ScriptedSigningView : public NativeSigningView,
                            public std::enable_shared_from_this<ScriptedSigningView> {
  public:
    explicit ScriptedSigningView(SigningScript script)
        : script_(std::move(script)) {}
    void setController(const std::shared_ptr<NVMNativeSigningViewController>& controller);
    const Failure& failure() const { return failure_; }

    void showTitle(const std::string&) override {}
    void showFinishButton(const std::string&, bool) override {}
    void showPoweredBy(const std::string&, bool) override {}
    void showSigners(const std::vector<std::shared_ptr<NVMRecipient>>& signers) override;
    void showConsumerDisclosure(const ConsumerDisclosure& disclosure) override;
    void beginSigning(const std::shared_ptr<NVMRecipient>& recipient) override;
    void showSignatureCapture(bool initials) override;
    void showTextEditor(const std::shared_ptr<NVMPDFBaseAnnotation>&, const std::string&) override {}
    void endEditing() override {}
    void scrollTo(int, double) override {}
    void updateAnnotation(const PdfAnnotation&, std::size_t) override {}
    void dismissPresented() override {}
    void close() override {}

  private:
    using Step = void (ScriptedSigningView::*)();
    void post(Step step);
    void fail(const std::string& description, const std::string& reason);
    void fillTabs();
    /// False when the tab cannot be filled so, which ends the signing.
    bool fillTab(const std::string& label, const Value& value);
    bool fillTextOrCheckbox(NVMTab& tab, const Value& value);
    bool chooseRadio(const NVMRadioGroup& group, const Value& value);
    bool refuse(const std::string& label, const std::string& why, const std::string& reason);
    void tapNextPlaceToSign();
    void finishTurn();
    void turnEnded();
    /// What the script calls the tab: its label, or the name of its radio group.
    std::string nameOf(const NVMTab& tab) const;

    SigningScript script_;
    std::weak_ptr<NVMNativeSigningViewController> controller_;
    std::size_t next_ = 0; ///< index of the script's signer whose turn is awaited
    const ScriptedSigner* signer_ = nullptr;
    std::shared_ptr<NVMRecipient> recipient_;
    std::shared_ptr<NVMTab> lastTapped_; ///< place to sign; a tap on it shows its effect before the next
    std::shared_ptr<void> turnEndObserver_;
    Failure failure_;
};

} // namespace norvane::cli
