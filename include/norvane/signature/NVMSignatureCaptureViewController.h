#pragma once

#include <norvane/signature/SignatureCapture.h>

#include <memory>
#include <optional>

namespace norvane {

/// Cleans up a photographed signature: the camera and the preview are the host's. Main thread only.
class NVMSignatureCaptureViewController {
  public:
    static constexpr int kInitialWhiteLevel = 128;

    /// The delegate is held weakly.
    NVMSignatureCaptureViewController(SignatureKind kind, std::weak_ptr<SignatureCaptureDelegate> delegate)
        : kind_(kind)
        , delegate_(std::move(delegate)) {}

    /// Keeps the photo (upright, one pixel a point), cropped to the preview's size. A new one replaces it.
    void captureTaken(const Image& photo, Size previewSize);
    /// The contrast slider, 0 to 255.
    void setWhiteLevel(int level);
    /// The capture with everything brighter than the level away; the null image before there is a capture.
    const Image& maskedImage() const { return masked_; }
    /// Back to the camera.
    void discardCapture();
    /// Hands the ink to the delegate. False when there is none, and nothing happens.
    bool doneTapped();
    void cancelTapped();

  private:
    SignatureKind kind_;
    std::weak_ptr<SignatureCaptureDelegate> delegate_;
    Image savedCapture_;
    Image masked_;
    int whiteLevel_ = kInitialWhiteLevel;
};

} // namespace norvane
