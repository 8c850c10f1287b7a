#include "SignatureFile.h"

#include <norvane/platform/Json.h>
#include <norvane/platform/Platform.h>
#include <norvane/signature/NVMSignatureCleanup.h>
#include <norvane/signature/NVMSignatureDrawView.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace norvane::cli {

namespace {

constexpr std::size_t kMostStrokes = 10'000;
constexpr std::size_t kMostPoints = 100'000;
constexpr double kLargestSide = 4000; ///< points

NVMError wrong(const std::filesystem::path& file, const std::string& what) {
    return NVMError::make("norvane.command", 0, file.string() + ": " + what, "SIGNATURE_FILE_INVALID");
}

std::optional<Color> colourNamed(const std::string& name) {
    if (name == "black") return Color{};
    if (name == "blue") return Color{0, 0, 1};
    if (name == "red") return Color{1, 0, 0};
    return std::nullopt;
}

using Strokes = std::vector<std::vector<StrokePoint>>;

Result<Strokes> strokesIn(const std::filesystem::path& file, const Value& document) {
    const Array* list = document["strokes"].asArray();
    if (!list || list->empty() || list->size() > kMostStrokes)
        return wrong(file, "\"strokes\" must be a list of 1 to 10000 strokes");
    Strokes strokes;
    std::size_t points = 0;
    for (const Value& entry : *list) {
        const Array* samples = entry.asArray();
        if (!samples || samples->empty()) return wrong(file, "a stroke must be a list of [x, y, t]");
        std::vector<StrokePoint>& stroke = strokes.emplace_back();
        for (const Value& sample : *samples) {
            const Array* numbers = sample.asArray();
            if (!numbers || numbers->size() < 2 || !(*numbers)[0].asDouble() || !(*numbers)[1].asDouble())
                return wrong(file, "a point must be [x, y, t], numbers in points and seconds");
            StrokePoint point{*(*numbers)[0].asDouble(), *(*numbers)[1].asDouble(), 0};
            if (numbers->size() > 2) point.time = (*numbers)[2].asDouble().value_or(0);
            if (std::abs(point.x) > kLargestSide || std::abs(point.y) > kLargestSide)
                return wrong(file, "a point lies more than 4000 points away");
            if (++points > kMostPoints) return wrong(file, "more than 100000 points");
            stroke.push_back(point);
        }
    }
    return strokes;
}

/// Moves the strokes so that they lie within a surface that is just large enough, and answers its size.
Size moveIntoSurface(Strokes& strokes, double lineWidth) {
    double left = kLargestSide, top = kLargestSide, right = -kLargestSide, bottom = -kLargestSide;
    for (const auto& stroke : strokes)
        for (const StrokePoint& point : stroke) {
            left = std::min(left, point.x);
            right = std::max(right, point.x);
            top = std::min(top, point.y);
            bottom = std::max(bottom, point.y);
        }
    for (auto& stroke : strokes)
        for (StrokePoint& point : stroke) {
            point.x += lineWidth - left;
            point.y += lineWidth - top;
        }
    return {right - left + 2 * lineWidth, bottom - top + 2 * lineWidth};
}

Result<Image> drawnFrom(const std::filesystem::path& file, const Value& document) {
    auto strokes = strokesIn(file, document);
    if (!strokes) return strokes.error();
    const std::string* name = document["color"].asString();
    const auto colour = colourNamed(name ? *name : "black");
    if (!colour) return wrong(file, "\"color\" must be \"black\", \"blue\" or \"red\"");
    const double width = document["width"].asDouble().value_or(6);
    if (!(width > 0 && width <= 100)) return wrong(file, "\"width\" must lie between 0 and 100 points");

    NVMSignatureDrawView surface(moveIntoSurface(*strokes, width), Platform::current().displayScale);
    surface.lineColor = *colour;
    surface.lineWidth = width;
    for (const auto& stroke : *strokes)
        surface.drawStroke(stroke);
    const auto image = surface.getImage();
    if (!image) return wrong(file, "the strokes leave nothing on the surface");
    const auto cropped = nvm_imageWithWhiteCropped(*image);
    if (!cropped) return wrong(file, "the strokes leave no ink");
    return *cropped;
}

} // namespace

Result<Image> readSignatureFile(const std::filesystem::path& file) {
    const auto bytes = Platform::current().files->read(file);
    if (!bytes) return wrong(file, bytes.error().localizedDescription());
    if (bytes->view().starts_with("\x89PNG")) {
        auto image = Image::decodePng(*bytes);
        if (!image) return wrong(file, image.error().localizedDescription());
        const auto opaque = nvm_imageWithWhiteCropped(*image);
        const auto cropped = opaque ? nvm_imageWithTransparentCropped(*opaque) : std::nullopt;
        if (!cropped) return wrong(file, "the picture holds no ink");
        return *cropped;
    }
    const auto document = parseJson(bytes->view());
    if (!document)
        return wrong(file, "neither a PNG nor strokes as JSON: " + document.error().localizedDescription());
    return drawnFrom(file, *document);
}

} // namespace norvane::cli
