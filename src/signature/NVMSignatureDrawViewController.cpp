#include <norvane/platform/NVMException.h>
#include <norvane/platform/Platform.h>
#include <norvane/signature/NVMSignatureCleanup.h>
#include <norvane/signature/NVMSignatureDrawViewController.h>

#include <array>

namespace norvane {
namespace {

/// The system's black, blue and red.
constexpr std::array<Color, 3> kColors{Color{0, 0, 0, 1}, Color{0, 0, 1, 1}, Color{1, 0, 0, 1}};

} // namespace

std::shared_ptr<NVMSignatureDrawViewController> NVMSignatureDrawViewController::make(
    SignatureKind kind, bool isInNavigationController, std::shared_ptr<SignatureDrawScreen> screen,
    std::weak_ptr<SignatureCaptureDelegate> delegate, Size bounds, double displayScale) {
    if (!isInNavigationController)
        throw NVMException("IllegalOperationError",
                           "NVMSignatureDrawViewController must be used within a navigation controller");
    return std::shared_ptr<NVMSignatureDrawViewController>(new NVMSignatureDrawViewController(
        kind, std::move(screen), std::move(delegate), bounds, displayScale));
}

NVMSignatureDrawViewController::NVMSignatureDrawViewController(
    SignatureKind kind, std::shared_ptr<SignatureDrawScreen> screen,
    std::weak_ptr<SignatureCaptureDelegate> delegate, Size bounds, double displayScale)
    : kind_(kind)
    , screen_(std::move(screen))
    , delegate_(std::move(delegate))
    , drawView_(bounds, displayScale) {
    drawView_.onEmptyChanged = [shown = screen_](bool isEmpty) { shown->enableAdopt(!isEmpty); };
}

NVMSignatureDrawViewController::~NVMSignatureDrawViewController() = default;

void NVMSignatureDrawViewController::prepareNavigationForSignature() {
    const StringTable& strings = *Platform::current().strings;
    const bool isInitials = kind_ == SignatureKind::Initials;
    screen_->showTitles(strings.text(isInitials ? "Signing.DrawYourInitials" : "Signing.DrawYourSignature"),
                        strings.text("Signing.Adopt"), strings.text("Common.Action.Cancel"),
                        strings.text("Signing.Clear"));
    screen_->enableAdopt(!drawView_.isEmpty());
    colorChosen(0);
}

void NVMSignatureDrawViewController::adoptTapped() {
    const auto drawn = drawView_.getImage();
    const auto cleaned = drawn ? nvm_imageWithWhiteCropped(*drawn) : std::nullopt;
    if (!cleaned) return;
    screen_->confirmAdoptSignature(*cleaned, [weak = weak_from_this(), image = *cleaned] {
        const auto self = weak.lock();
        const auto delegate = self ? self->delegate_.lock() : nullptr;
        if (delegate) deliverCapture(*delegate, self->kind_, image);
    });
}

void NVMSignatureDrawViewController::cancelTapped() {
    if (const auto delegate = delegate_.lock()) delegate->signatureCaptureCanceled();
}

void NVMSignatureDrawViewController::clearTapped() {
    drawView_.clear();
    screen_->enableAdopt(false);
}

void NVMSignatureDrawViewController::colorChosen(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= kColors.size()) return;
    drawView_.lineColor = kColors[static_cast<std::size_t>(index)];
    screen_->selectColor(index);
}

} // namespace norvane
