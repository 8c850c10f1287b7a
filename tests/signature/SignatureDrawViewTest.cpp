#include <norvane/signature/NVMSignatureCleanup.h>
#include <norvane/signature/NVMSignatureDrawView.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace norvane {
namespace {

Touch touchAt(double x, double y, const Point& from) {
    Touch touch;
    touch.location = {x, y};
    touch.previousLocation = from;
    return touch;
}

Touch stylus(double force, double altitude, double azimuth) {
    Touch touch = touchAt(20, 10, {10, 10});
    touch.type = TouchType::Stylus;
    touch.force = force;
    touch.altitudeAngle = altitude;
    touch.azimuthAngle = azimuth;
    return touch;
}

Color colorAt(const Image& image, int x, int y) {
    const std::uint8_t* pixel = image.row(y) + x * 4;
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0, 1};
}

TEST(SignatureDrawView, LeavesADotForATapAndTellsThatItIsNotEmpty) {
    NVMSignatureDrawView surface({100, 50}, 1);
    std::vector<bool> changes;
    surface.onEmptyChanged = [&](bool isEmpty) { changes.push_back(isEmpty); };
    EXPECT_FALSE(surface.getImage());

    surface.drawStroke({{50, 25, 0}});
    EXPECT_FALSE(surface.isEmpty());
    const auto image = surface.getImage();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{100, 50}));
    const auto ink = nvm_imageWithWhiteCropped(*image);
    ASSERT_TRUE(ink);
    EXPECT_NEAR(ink->width(), 6.2, 2);
    EXPECT_EQ(colorAt(*image, 50, 25), (Color{0, 0, 0, 1}));

    surface.clear();
    EXPECT_FALSE(surface.getImage());
    EXPECT_TRUE(surface.paths().empty());
    EXPECT_EQ(changes, (std::vector<bool>{false, true}));
}

TEST(SignatureDrawView, SmoothsThroughTheMidpointsOfTouches) {
    NVMSignatureDrawView surface({200, 100}, 1);
    std::vector<Rect> dirty;
    surface.onNeedsDisplay = [&](const Rect& part) { dirty.push_back(part); };
    surface.touchesBegan(touchAt(10, 10, {10, 10}));
    surface.touchesMoved(touchAt(30, 10, {10, 10}));
    surface.touchesMoved(touchAt(30, 50, {30, 10}));
    ASSERT_TRUE(surface.currentPath());
    const QuadraticCurve last = surface.currentPath()->curves.back();
    EXPECT_EQ(last.from, (Point{20, 10}));
    EXPECT_EQ(last.control, (Point{30, 10}));
    EXPECT_EQ(last.to, (Point{30, 30}));
    EXPECT_EQ(dirty.back(), (Rect{20 - 12, 10 - 12, 10 + 24, 20 + 24}));

    surface.touchesEnded(touchAt(30, 60, {30, 50}));
    ASSERT_EQ(surface.paths().size(), 1u);
    EXPECT_EQ(surface.paths()[0].bezierPath->curves.back().to, (Point{30, 55}))
        << "rendered once more at the end";
    EXPECT_FALSE(surface.currentPath());
}

TEST(SignatureDrawView, KeepsTheColourOfEarlierStrokes) {
    NVMSignatureDrawView surface({100, 100}, 1);
    surface.drawStroke({{10, 20, 0}, {90, 20, 0.1}});
    surface.lineColor = {1, 0, 0, 1};
    surface.drawStroke({{10, 70, 1}, {90, 70, 1.1}});
    for (const Image& image : {*surface.getImage(), surface.drawRect({0, 0, 100, 100})}) {
        EXPECT_EQ(colorAt(image, 30, 20), (Color{0, 0, 0, 1}));
        EXPECT_EQ(colorAt(image, 30, 70), (Color{1, 0, 0, 1}));
        EXPECT_EQ(colorAt(image, 30, 45), (Color{1, 1, 1, 1}));
    }
    EXPECT_EQ(colorAt(surface.drawRect({20, 60, 40, 20}), 10, 10), (Color{1, 0, 0, 1}));
}

TEST(SignatureDrawView, GivesAStylusItsOwnWidths) {
    NVMSignatureDrawView surface({100, 100}, 1);
    EXPECT_EQ(surface.calculateLineWidthForTouch(stylus(0.5, 1, 0)), 6);
    surface.enablePencilSupport(true);
    surface.enablePencilTiltingSupport(true);
    surface.lineWidth = 9;
    EXPECT_EQ(surface.calculateLineWidthForTouch(touchAt(1, 1, {})), 9);
    EXPECT_EQ(surface.calculateLineWidthForTouch(stylus(0.5, 1, 0)), 2.5);
    EXPECT_EQ(surface.calculateLineWidthForTouch(stylus(0, 1, 0)), 10);

    surface.touchesBegan(stylus(0.5, 0.1, 0)); // moves to the right
    EXPECT_EQ(surface.calculateLineWidthForTouch(stylus(0.5, 0.2, 0)), 6);
    EXPECT_NEAR(surface.calculateLineWidthForTouch(stylus(0.5, 0.2, std::numbers::pi / 2)), 10, 1e-9);
    EXPECT_NEAR(surface.calculateLineWidthForTouch(stylus(0.5, 0.2, -std::numbers::pi * 0.6)), 8, 1e-9);
    EXPECT_NEAR(surface.calculateLineWidthForTouch(stylus(0.5, 0.3256637061435917, std::numbers::pi / 2)), 8,
                1e-9);
    EXPECT_EQ(surface.calculateLineWidthForTouch(stylus(0.5, 0.62, std::numbers::pi / 2)), 6);

    surface.touchesEnded(stylus(0.5, 0.1, 0));
    EXPECT_EQ(surface.paths()[0].bezierPath->curves.size(), 1u) << "a stylus's end renders nothing more";
}

TEST(SignatureDrawView, IgnoresTouchesThatAreNowhere) {
    NVMSignatureDrawView surface({100, 100}, 1);
    surface.drawStroke({{std::nan(""), 1, 0}, {2, 2, 1}});
    EXPECT_TRUE(surface.isEmpty());
    surface.drawStroke({{5, 5, 0}, {1e300, 5, 1}, {20, 5, 2}});
    surface.drawStroke({});
    EXPECT_TRUE(surface.getImage());
    EXPECT_EQ(surface.touchSpeeds().size(), 8u);
}

TEST(SignatureDrawView, ShowsAnImageBeneathTheStrokes) {
    NVMSignatureDrawView surface({100, 100}, 1);
    NVMSignatureDrawView other({50, 50}, 1);
    other.lineColor = {0, 0, 1, 1};
    other.drawStroke({{25, 25, 0}});
    surface.setImage(*other.getImage());
    EXPECT_FALSE(surface.isEmpty());
    EXPECT_EQ(colorAt(*surface.getImage(), 50, 50), (Color{0, 0, 1, 1}));
    surface.clearOnRedraw = true;
    EXPECT_EQ(colorAt(surface.drawRect({0, 0, 100, 100}), 50, 50), (Color{1, 1, 1, 1}));
}

} // namespace
} // namespace norvane
