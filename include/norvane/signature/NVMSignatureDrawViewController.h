#pragma once

#include <norvane/signature/NVMSignatureDrawView.h>
#include <norvane/signature/SignatureCapture.h>

#include <functional>
#include <memory>
#include <string>

namespace norvane {

/// What the drawing screen shows, as its controller sees it. Main thread; every call returns at once.
class SignatureDrawScreen {
  public:
    virtual ~SignatureDrawScreen() = default;
    /// Titles of the screen, of the right, the left and the clear button.
    virtual void showTitles(const std::string& title, const std::string& adopt, const std::string& cancel,
                            const std::string& clear) = 0;
    virtual void enableAdopt(bool isEnabled) = 0;
    /// Marks one of the colour buttons: 0 black, 1 blue, 2 red.
    virtual void selectColor(int index) = 0;
    /// Asks the person to confirm the cleaned-up image. `confirmed` runs at most once, never inside the call.
    virtual void confirmAdoptSignature(const Image& image, std::function<void()> confirmed) = 0;
};

/// Lets a person draw a signature or initials and adopt them. Main thread only.
class NVMSignatureDrawViewController : public std::enable_shared_from_this<NVMSignatureDrawViewController> {
  public:
    /// Throws NVMException ("IllegalOperationError") unless the screen is inside a navigation container, for
    /// its buttons are the container's. The delegate is held weakly.
    static std::shared_ptr<NVMSignatureDrawViewController>
    make(SignatureKind kind, bool isInNavigationController, std::shared_ptr<SignatureDrawScreen> screen,
         std::weak_ptr<SignatureCaptureDelegate> delegate, Size bounds, double displayScale);
    ~NVMSignatureDrawViewController();

    NVMSignatureDrawView& drawView() { return drawView_; }

    /// Sets title and buttons for the kind. Once the screen shows.
    void prepareNavigationForSignature();
    void adoptTapped(); ///< no effect while the surface is empty
    void cancelTapped();
    void clearTapped();
    /// 0 black, 1 blue, 2 red, of the buttons and of the segmented control; others have no effect.
    void colorChosen(int index);

  private:
    NVMSignatureDrawViewController(SignatureKind kind, std::shared_ptr<SignatureDrawScreen> screen,
                                   std::weak_ptr<SignatureCaptureDelegate> delegate, Size bounds,
                                   double displayScale);

    SignatureKind kind_;
    std::shared_ptr<SignatureDrawScreen> screen_;
    std::weak_ptr<SignatureCaptureDelegate> delegate_;
    NVMSignatureDrawView drawView_;
};

} // namespace norvane
