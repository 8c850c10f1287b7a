#pragma once

#include <norvane/pdf/AnnotationView.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

struct NVMRecipient;
class NVMPDFBaseAnnotation;

/// What the consumer-disclosure screen shows.
struct ConsumerDisclosure {
    std::string disclosureId;
    std::string markup; ///< HTML
    std::string senderName;
    std::string senderCompany;
    std::string recipientName;
};

/// The screen of offline signing, as its controller sees it. Every call comes on the main queue and returns
/// at once; answers go to the controller's entry points, on the main queue, never inside the call.
class NativeSigningView : public AnnotationView {
  public:
    virtual void showTitle(const std::string& title) = 0;
    virtual void showFinishButton(const std::string& title, bool enabled) = 0;
    virtual void showPoweredBy(const std::string& label, bool visible) = 0;
    /// Answered by `signersViewControllerDidChooseSigner` or `signersViewControllerCanceled`.
    virtual void showSigners(const std::vector<std::shared_ptr<NVMRecipient>>& signers) = 0;
    /// Answered by `consumerDisclosureControllerConsented` or `consumerDisclosureControllerCancelled`.
    virtual void showConsumerDisclosure(const ConsumerDisclosure& disclosure) = 0;
    /// Whose turn it is has been told and has agreed: the recipient's fields may be filled in now.
    virtual void beginSigning(const std::shared_ptr<NVMRecipient>& recipient) = 0;
    /// Answered by `signatureCaptureDidFinishWithSignature`, `...WithInitials` or `signatureCaptureCanceled`.
    virtual void showSignatureCapture(bool initials) = 0;
    /// An in-place editor over the annotation; each change goes to `textViewDidChange`.
    virtual void showTextEditor(const std::shared_ptr<NVMPDFBaseAnnotation>& annotation,
                                const std::string& text) = 0;
    virtual void endEditing() = 0;
    /// Brings a place into view: the page from 1 within the combined PDF, points from the page's top.
    virtual void scrollTo(int pageNumber, double originY) = 0;
    /// Closes the presented chooser, capture or disclosure screen.
    virtual void dismissPresented() = 0;
    /// Closes the screen; nothing is called after it.
    virtual void close() = 0;
};

} // namespace norvane
