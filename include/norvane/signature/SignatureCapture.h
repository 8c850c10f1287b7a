#pragma once

#include <norvane/signature/Image.h>

namespace norvane {

/// What a capture screen was opened for.
enum class SignatureKind { Signature, Initials };

/// Hears how a capture ended: exactly one call, then the screen closes. Main thread.
class SignatureCaptureDelegate {
  public:
    virtual ~SignatureCaptureDelegate() = default;
    virtual void signatureCaptureDidFinishWithSignature(const Image& image) = 0;
    virtual void signatureCaptureDidFinishWithInitials(const Image& image) = 0;
    virtual void signatureCaptureCanceled() = 0;
};

/// Tells the delegate, by the kind that was asked for.
void deliverCapture(SignatureCaptureDelegate& delegate, SignatureKind kind, const Image& image);

} // namespace norvane
