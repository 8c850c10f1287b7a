#include <norvane/signature/Image.h>

#include <gtest/gtest.h>

#include <vector>

namespace norvane {
namespace {

Image gradient(int width, int height) {
    return Image::generate(width, height, 2, [&](std::uint8_t* pixel) {
        for (int i = 0; i < width * height; ++i, pixel += 4) {
            pixel[0] = static_cast<std::uint8_t>(i);
            pixel[1] = static_cast<std::uint8_t>(i / width);
            pixel[2] = 200;
            pixel[3] = static_cast<std::uint8_t>(255 - i % 7);
        }
    });
}

ImageErrorCode codeOf(const std::string& bytes) {
    const auto image = Image::decodePng(Data(bytes));
    return image ? ImageErrorCode{} : static_cast<ImageErrorCode>(image.error().code);
}

TEST(Image, SurvivesThePngForm) {
    const Image image = gradient(33, 20);
    EXPECT_EQ(image.size(), (Size{16.5, 10}));
    const auto decoded = Image::decodePng(image.pngData());
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, image);
    const Image part = image.region(5, 4, 20, 10);
    EXPECT_EQ(*Image::decodePng(part.pngData()), part);
    EXPECT_TRUE(Image().pngData().empty());
}

TEST(Image, RefusesWhatIsNoSoundPng) {
    const std::string png(gradient(40, 40).pngData().view());
    EXPECT_EQ(codeOf(""), ImageErrorCode::NotPng);
    EXPECT_EQ(codeOf("\xFF\xD8\xFF\xE0 a photograph, but no PNG at all"), ImageErrorCode::NotPng);
    EXPECT_EQ(codeOf(png.substr(0, png.size() / 2)), ImageErrorCode::Damaged);
    std::string flipped = png;
    flipped[png.size() / 2] = static_cast<char>(~flipped[png.size() / 2]);
    EXPECT_EQ(codeOf(flipped), ImageErrorCode::Damaged);

    std::string wide = png;
    wide.replace(16, 8, std::string("\x00\x00\x7F\xFF\x00\x00\x7F\xFF", 8));
    EXPECT_EQ(codeOf(wide), ImageErrorCode::TooLarge);
    wide.replace(16, 8, std::string("\x00\x00\x10\x00\x00\x00\x10\x00", 8));
    EXPECT_EQ(codeOf(wide), ImageErrorCode::Damaged) << "claims more than its bytes can hold";
}

TEST(Image, SharesLargeRegionsAndCopiesSmallOnes) {
    const Image image = gradient(100, 100);
    EXPECT_EQ(image.region(10, 10, 80, 80).buffer(), image.buffer());
    const Image small = image.region(10, 20, 5, 6);
    EXPECT_NE(small.buffer(), image.buffer());
    EXPECT_EQ(small.row(5)[4], image.row(25)[11 * 4]);
    EXPECT_TRUE(Image::generate(40'000, 1, 1, [](std::uint8_t*) { FAIL(); }).isNull());
}

} // namespace
} // namespace norvane
