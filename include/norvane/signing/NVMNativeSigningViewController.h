#pragma once

#include <norvane/platform/Result.h>
#include <norvane/signature/Image.h>
#include <norvane/signing/NVMNativeSigningEnvelopeHandler.h>
#include <norvane/signing/NVMPTNToolManager.h>
#include <norvane/signing/NativeSigningView.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

class DecodedImages;
class NVMPDFBaseAnnotation;
class NVMPTNPDFAnnotationManager;
class PdfDocument;
struct NVMEnvelopeDefinition;
struct NVMRadioGroup;
struct NVMRecipient;
struct NVMTab;

/// Walks the recipients of an envelope through signing it on the device: whose turn it is, what each tab
/// shows, what is still missing, and at the end the finished envelope in the cache, in line for upload. State
/// and rules only; what the person sees is the view's. Everything runs on the main queue: calls from
/// elsewhere are a programming error. Once the envelope is on its way into the cache, or discarded, whatever
/// the view or an alert that was left open still answers has no effect.
class NVMNativeSigningViewController : public std::enable_shared_from_this<NVMNativeSigningViewController>,
                                       public NVMPTNToolManagerDelegate {
  public:
    /// How a signing ended: the envelope's transaction id once it is cached, else why it is not. A signing
    /// that the person discarded ends with `cancelledError`.
    using Completion = std::function<void(Result<std::string>)>;

    /// Makes the screen's controller. An error when the envelope has no combined document or that is no PDF.
    /// The completion runs exactly once, when the screen has closed.
    static Result<std::shared_ptr<NVMNativeSigningViewController>>
    viewControllerForEnvelope(std::shared_ptr<NVMEnvelopeDefinition> envelope,
                              std::shared_ptr<NativeSigningView> view, Completion completion);
    ~NVMNativeSigningViewController() override;

    /// Shows the document and goes to the first signer. Once, after making.
    void viewDidLoad();

    /// Buttons. The one to cancel is titled "Common.Action.Cancel", localised.
    void cancelTapped();
    void finishTapped();

    /// Where the view reports taps on the pages; from `viewDidLoad` on.
    const NVMPTNToolManager& toolManager() const { return *toolManager_; }
    void pdfViewControllerDidTapOnAnnotation(const Annotation& annotation, const Point&) override;
    void pdfViewControllerDidTapOnPageView(const Point&) override;

    /// Answers of the view. A tap on an annotation may also come by the tab's identifier, without a place.
    void didTapOnAnnotation(const std::string& tabId);
    void textViewDidChange(const std::string& tabId, const std::string& text);
    void signatureCaptureDidFinishWithSignature(const Image& image);
    void signatureCaptureDidFinishWithInitials(const Image& image);
    void signatureCaptureCanceled();
    void signersViewControllerDidChooseSigner(const std::shared_ptr<NVMRecipient>& signer);
    void signersViewControllerCanceled();
    void consumerDisclosureControllerConsented(const std::string& disclosureId);
    void consumerDisclosureControllerCancelled();

    const std::shared_ptr<NVMEnvelopeDefinition>& envelope() const { return envelopeHandler_.envelope(); }
    /// Whose turn it is; null before the first and while the chooser shows.
    const std::shared_ptr<NVMRecipient>& currentRecipient() const { return currentRecipient_; }
    /// The tabs of the current recipient that still need something.
    std::vector<std::shared_ptr<NVMTab>> remainingRequiredTags() const;
    /// "Signing.NextField" or "General.Finish", localised.
    std::string finishButtonTitle() const;
    /// What the discard sheet's action does: the signing ends as cancelled, its files go unless an earlier
    /// copy of the envelope has them in the cache.
    void exitNativeSigning();

    static NVMError cancelledError();

  private:
    NVMNativeSigningViewController(std::shared_ptr<NVMEnvelopeDefinition> envelope,
                                   std::shared_ptr<PdfDocument> document,
                                   std::shared_ptr<NativeSigningView> view, Completion completion);

    // Choosing and handing over.
    void setupWithEnvelope();
    void switchToSigners();
    void displayChooseNextSignerIfIncomplete();
    void switchToSigner(const std::shared_ptr<NVMRecipient>& signer);
    void recordPlaceAndTime();
    void addAnnotations();
    void addAnnotationForTag(const std::shared_ptr<NVMTab>& tab, int startPage);
    void addAnnotationForRadioGroupTag(const std::shared_ptr<NVMTab>& tab, int startPage);
    std::string visibleTextOf(const NVMTab& tab) const;
    void finalizeSwitchToCurrentRecipient(const std::shared_ptr<NVMRecipient>& previous);
    void presentSignerPermissions();
    void recipientsDidChange();

    // Filling fields.
    void handleTapOnSignAndInitialAnnotation(const std::shared_ptr<NVMTab>& tab);
    void toggleCheckbox(const std::shared_ptr<NVMTab>& tab);
    void selectRadio(const std::shared_ptr<NVMTab>& tab);
    void showRadioGroup(const NVMRadioGroup& group);
    void updateSignatureWithImage(const Image& image, bool isInitial);
    void stamp(const std::shared_ptr<NVMTab>& tab, const Data& image);
    void highlightTab(const std::shared_ptr<NVMTab>& tab);
    void deselectAnnotations();
    void scrollToNextField();
    void updateFinishButton();
    void updateAnnotations();

    // Finishing.
    void finalizeCurrentRecipient();
    void updateCurrentRoutingOrder();
    void finishOrSwitchToSigners();
    void finishAsSelfSign();
    void finishAsGuest();
    void finishAsHost();
    void finishWithMessage(const std::string& titleKey);
    void finishEnvelope();
    void envelopeWasCached(const std::optional<NVMError>& error);
    void presentDiscardSheet();
    void clearFiles();
    void end(Result<std::string> outcome);
    void complete(Result<std::string> outcome);

    std::shared_ptr<NVMTab> tabWithId(const std::string& tabId) const;
    std::shared_ptr<NVMPDFBaseAnnotation> annotationFor(const NVMTab& tab) const;
    bool alertsAreHidden() const;
    bool isSignedInUser(const NVMRecipient& recipient) const;
    int pageOf(const NVMTab& tab) const;

    NVMNativeSigningEnvelopeHandler envelopeHandler_;
    std::shared_ptr<PdfDocument> docToOpen_;
    std::shared_ptr<NativeSigningView> view_;
    Completion completion_;
    std::unique_ptr<NVMPTNPDFAnnotationManager> annotationsManager_;
    std::unique_ptr<NVMPTNToolManager> toolManager_;
    std::unique_ptr<DecodedImages> images_;
    std::map<std::string, int> startPageOfDocument_; ///< by document id, in the combined PDF, from 0
    std::shared_ptr<NVMRecipient> currentRecipient_;
    std::string nameLastFinishedSigning_;
    std::weak_ptr<NVMTab> highlightedTab_;
    std::weak_ptr<NVMTab> adoptingForTab_;
    std::shared_ptr<void> recipientsObserver_;
    bool isWaitingForRecipients_ = false; ///< the host changed who signs here; it will say so
    bool isOver_ = false;                 ///< being cached, discarded, or failed
};

} // namespace norvane
