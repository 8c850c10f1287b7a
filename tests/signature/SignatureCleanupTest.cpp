#include <norvane/signature/NVMSignatureCleanup.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace norvane {
namespace {

using Pixel = std::array<std::uint8_t, 4>;
constexpr Pixel kWhite{255, 255, 255, 255};

struct Dot {
    int x;
    int y;
    Pixel pixel;
};

Image imageWith(int width, int height, const Pixel& ground, const std::vector<Dot>& dots) {
    return Image::generate(width, height, 1, [&](std::uint8_t* pixels) {
        for (int i = 0; i < width * height; ++i)
            std::memcpy(pixels + i * 4, ground.data(), 4);
        for (const Dot& dot : dots)
            std::memcpy(pixels + (dot.y * width + dot.x) * 4, dot.pixel.data(), 4);
    });
}

Pixel pixelAt(const Image& image, int x, int y) {
    Pixel pixel{};
    std::memcpy(pixel.data(), image.row(y) + x * 4, 4);
    return pixel;
}

TEST(SignatureCleanup, CropsToEveryPixelThatIsNotPureWhite) {
    const Image image =
        imageWith(200, 100, kWhite, {{70, 20, {254, 255, 255, 255}}, {150, 90, {0, 0, 0, 255}}});
    const auto cropped = nvm_imageWithWhiteCropped(image);
    ASSERT_TRUE(cropped);
    EXPECT_EQ(cropped->width(), 81);
    EXPECT_EQ(cropped->height(), 71);
    EXPECT_EQ(pixelAt(*cropped, 0, 0), (Pixel{254, 255, 255, 255}));
    EXPECT_EQ(pixelAt(*cropped, 80, 70), (Pixel{0, 0, 0, 255}));

    const auto whole = nvm_imageWithTransparentCropped(image);
    ASSERT_TRUE(whole);
    EXPECT_EQ(*whole, image);
    EXPECT_FALSE(nvm_imageWithWhiteCropped(imageWith(50, 50, {255, 255, 255, 0}, {})));
    EXPECT_FALSE(nvm_imageWithTransparentCropped(imageWith(50, 50, {9, 9, 9, 0}, {})));
    EXPECT_FALSE(nvm_imageWithWhiteCropped(Image()));
}

TEST(SignatureCleanup, FindsTheSameRectangleAsCountingEveryPixel) {
    std::mt19937 random(11);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 200; ++round) {
        const int width = 1 + below(150);
        const int height = 1 + below(40);
        std::vector<Dot> dots;
        int left = width, right = -1, top = height, bottom = -1;
        for (int n = 1 + below(4); n > 0; --n) {
            const Dot dot{below(width), below(height), {0, 0, 0, 1}};
            dots.push_back(dot);
            left = std::min(left, dot.x);
            right = std::max(right, dot.x);
            top = std::min(top, dot.y);
            bottom = std::max(bottom, dot.y);
        }
        const auto cropped = nvm_imageWithTransparentCropped(imageWith(width, height, {0, 0, 0, 0}, dots));
        ASSERT_TRUE(cropped);
        EXPECT_EQ(cropped->width(), right - left + 1);
        EXPECT_EQ(cropped->height(), bottom - top + 1);
    }
}

TEST(SignatureCleanup, MasksWhatIsBrightInEveryComponent) {
    const Image photo =
        imageWith(4, 1, {200, 200, 200, 255},
                  {{1, 0, {100, 200, 200, 255}}, {2, 0, {128, 128, 128, 90}}, {3, 0, {127, 255, 255, 90}}});
    const Image masked = nvm_imageMaskedWithWhiteLevel(photo, 128);
    EXPECT_EQ(pixelAt(masked, 0, 0)[3], 0);
    EXPECT_EQ(pixelAt(masked, 1, 0), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(pixelAt(masked, 2, 0)[3], 0);
    EXPECT_EQ(pixelAt(masked, 3, 0), (Pixel{0, 0, 0, 90}));
}

TEST(SignatureCleanup, FitsWithoutEnlargingUnlessAsked) {
    const Image image = imageWith(100, 50, {10, 20, 30, 255}, {});
    EXPECT_EQ(resizedImageToFitInSize(image, {200, 200}, false), image);
    EXPECT_EQ(resizedImageToFitInSize(image, {200, 200}, true).size(), (Size{200, 100}));
    const Image fitted = resizedImageToFitInSize(image, {40, 40}, false);
    EXPECT_EQ(fitted.size(), (Size{40, 20}));
    EXPECT_EQ(pixelAt(fitted, 0, 0), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(pixelAt(fitted, 39, 19), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(resizedImageToSize(image, {0, 1e9}).width(), 0);
    EXPECT_EQ(resizedImageToSize(image.withScale(2), {10, 10}).width(), 20);
}

TEST(SignatureCleanup, CentresTheFittedPhotoInTheRegion) {
    const Image portrait = imageWith(100, 200, {10, 20, 30, 255}, {});
    const Image region = nvm_imageCroppedToSize(portrait, {120, 100});
    EXPECT_EQ(region.size(), (Size{120, 100}));
    EXPECT_EQ(pixelAt(region, 34, 50)[3], 0);
    EXPECT_EQ(pixelAt(region, 35, 50), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(pixelAt(region, 84, 99), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(pixelAt(region, 85, 50)[3], 0);

    const Image landscape = nvm_imageCroppedToSize(imageWith(200, 100, {10, 20, 30, 255}, {}), {100, 100});
    EXPECT_EQ(pixelAt(landscape, 0, 50)[3], 255);
    EXPECT_EQ(pixelAt(landscape, 99, 50)[3], 255);
    EXPECT_EQ(pixelAt(landscape, 50, 24)[3], 0);
}

} // namespace
} // namespace norvane
