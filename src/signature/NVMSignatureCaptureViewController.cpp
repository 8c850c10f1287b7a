#include <norvane/signature/NVMSignatureCaptureViewController.h>
#include <norvane/signature/NVMSignatureCleanup.h>

#include <algorithm>

namespace norvane {

void deliverCapture(SignatureCaptureDelegate& delegate, SignatureKind kind, const Image& image) {
    if (kind == SignatureKind::Initials)
        delegate.signatureCaptureDidFinishWithInitials(image);
    else
        delegate.signatureCaptureDidFinishWithSignature(image);
}

void NVMSignatureCaptureViewController::captureTaken(const Image& photo, Size previewSize) {
    savedCapture_ = nvm_imageCroppedToSize(photo.withScale(1), previewSize);
    whiteLevel_ = kInitialWhiteLevel;
    masked_ = nvm_imageMaskedWithWhiteLevel(savedCapture_, whiteLevel_);
}

void NVMSignatureCaptureViewController::setWhiteLevel(int level) {
    whiteLevel_ = std::clamp(level, 0, 255);
    masked_ = nvm_imageMaskedWithWhiteLevel(savedCapture_, whiteLevel_);
}

void NVMSignatureCaptureViewController::discardCapture() {
    savedCapture_ = Image();
    masked_ = Image();
}

bool NVMSignatureCaptureViewController::doneTapped() {
    const auto cropped = nvm_imageWithTransparentCropped(masked_);
    if (!cropped) return false;
    if (const auto delegate = delegate_.lock()) deliverCapture(*delegate, kind_, *cropped);
    return true;
}

void NVMSignatureCaptureViewController::cancelTapped() {
    if (const auto delegate = delegate_.lock()) delegate->signatureCaptureCanceled();
}

} // namespace norvane
