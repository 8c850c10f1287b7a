#include "tests/support/KitFixture.h"

#include <norvane/platform/NVMException.h>
#include <norvane/signature/NVMSignatureCaptureViewController.h>
#include <norvane/signature/NVMSignatureDrawViewController.h>

namespace norvane {
namespace {

struct RecordingDrawScreen final : SignatureDrawScreen {
    void showTitles(const std::string& shown, const std::string&, const std::string&,
                    const std::string&) override {
        title = shown;
    }
    void enableAdopt(bool isEnabled) override { canAdopt = isEnabled; }
    void selectColor(int index) override { color = index; }
    void confirmAdoptSignature(const Image&, std::function<void()> confirmed) override {
        confirm = std::move(confirmed);
    }

    std::string title;
    bool canAdopt = true;
    int color = -1;
    std::function<void()> confirm;
};

struct RecordingCaptureDelegate final : SignatureCaptureDelegate {
    void signatureCaptureDidFinishWithSignature(const Image& image) override { signature = image; }
    void signatureCaptureDidFinishWithInitials(const Image& image) override { initials = image; }
    void signatureCaptureCanceled() override { isCanceled = true; }

    Image signature;
    Image initials;
    bool isCanceled = false;
};

class SignatureControllers : public KitFixture {
  protected:
    std::shared_ptr<NVMSignatureDrawViewController> drawing(SignatureKind kind) {
        return NVMSignatureDrawViewController::make(kind, true, screen_, delegate_, {100, 50}, 1);
    }
    std::shared_ptr<RecordingDrawScreen> screen_ = std::make_shared<RecordingDrawScreen>();
    std::shared_ptr<RecordingCaptureDelegate> delegate_ = std::make_shared<RecordingCaptureDelegate>();
};

TEST_F(SignatureControllers, AdoptTheCroppedInkOnceItIsConfirmed) {
    const auto controller = drawing(SignatureKind::Initials);
    controller->prepareNavigationForSignature();
    EXPECT_EQ(screen_->title, "Draw Your Initials");
    EXPECT_FALSE(screen_->canAdopt);
    EXPECT_EQ(screen_->color, 0);
    controller->adoptTapped();
    EXPECT_FALSE(screen_->confirm);

    controller->colorChosen(2);
    controller->colorChosen(3);
    controller->drawView().drawStroke({{50, 25, 0}});
    EXPECT_TRUE(screen_->canAdopt);
    controller->adoptTapped();
    EXPECT_TRUE(delegate_->initials.isNull());
    screen_->confirm();
    EXPECT_LT(delegate_->initials.width(), 12);
    EXPECT_EQ(delegate_->initials.row(4)[4 * 4], 255) << "red";
    EXPECT_EQ(delegate_->initials.row(4)[4 * 4 + 1], 0);

    controller->clearTapped();
    EXPECT_FALSE(screen_->canAdopt);
    controller->cancelTapped();
    EXPECT_TRUE(delegate_->isCanceled);
}

TEST_F(SignatureControllers, WantANavigationContainerAndForgetAScreenThatWentAway) {
    EXPECT_THROW(
        NVMSignatureDrawViewController::make(SignatureKind::Signature, false, screen_, delegate_, {9, 9}, 1),
        NVMException);
    auto controller = drawing(SignatureKind::Signature);
    controller->drawView().drawStroke({{50, 25, 0}});
    controller->adoptTapped();
    controller.reset();
    screen_->confirm();
    EXPECT_TRUE(delegate_->signature.isNull());
}

TEST_F(SignatureControllers, CleanUpAPhotoAtTheChosenContrast) {
    NVMSignatureCaptureViewController controller(SignatureKind::Signature, delegate_);
    EXPECT_FALSE(controller.doneTapped());
    const Image photo = Image::generate(60, 40, 3, [](std::uint8_t* pixels) {
        for (int i = 0; i < 60 * 40; ++i, pixels += 4) {
            const bool isInk = i == 10 * 60 + 20;
            pixels[0] = pixels[1] = pixels[2] = isInk ? 100 : i / 60 == 30 ? 150 : 220;
            pixels[3] = 255;
        }
    });
    controller.captureTaken(photo, {60, 40});
    controller.setWhiteLevel(200);
    ASSERT_TRUE(controller.doneTapped());
    EXPECT_EQ(delegate_->signature.size(), (Size{60, 21})) << "the grey line counts as ink";
    controller.setWhiteLevel(120);
    ASSERT_TRUE(controller.doneTapped());
    EXPECT_EQ(delegate_->signature.size(), (Size{1, 1}));
    EXPECT_EQ(delegate_->signature.row(0)[0], 0);
    controller.discardCapture();
    EXPECT_FALSE(controller.doneTapped());
}

} // namespace
} // namespace norvane
