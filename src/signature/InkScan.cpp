#include "src/signature/InkScan.h"

#include <array>
#include <cstring>

namespace norvane {
namespace {

/// Four pixels, in a register of every processor that the kit runs on.
using Lanes [[gnu::vector_size(16)]] = std::uint64_t;

Lanes lanesAt(const std::uint8_t* bytes) {
    Lanes lanes;
    std::memcpy(&lanes, bytes, sizeof lanes);
    return lanes;
}

/// Whether pixels are ink, in terms of 32-bit loads: ink has some bit of `mask` unlike `background`.
struct InkTest {
    std::uint32_t background;
    std::uint32_t mask;

    static InkTest of(NVMCropMode mode) {
        const std::array<std::uint8_t, 4> colors{255, 255, 255, 0};
        const std::array<std::uint8_t, 4> alpha{0, 0, 0, 255};
        InkTest test{};
        if (mode == NVMCropMode::White) {
            std::memcpy(&test.mask, colors.data(), sizeof test.mask);
            test.background = test.mask;
        } else {
            std::memcpy(&test.mask, alpha.data(), sizeof test.mask);
        }
        return test;
    }

    bool isInk(const std::uint8_t* row, int x) const {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, row + static_cast<std::size_t>(x) * 4, sizeof pixel);
        return ((pixel ^ background) & mask) != 0;
    }

    static constexpr int kBlock = 64;

    /// Whether any of the `kBlock` pixels from `x` on is ink.
    bool blockHasInk(const std::uint8_t* row, int x) const {
        const std::uint8_t* bytes = row + static_cast<std::size_t>(x) * 4;
        const std::uint64_t pair = std::uint64_t{background} << 32 | background;
        const Lanes expected{pair, pair};
        Lanes even{};
        Lanes odd{};
        for (std::size_t at = 0; at < kBlock * 4; at += 4 * sizeof(Lanes)) {
            even |= (lanesAt(bytes + at) ^ expected) | (lanesAt(bytes + at + sizeof(Lanes)) ^ expected);
            odd |= (lanesAt(bytes + at + 2 * sizeof(Lanes)) ^ expected) |
                   (lanesAt(bytes + at + 3 * sizeof(Lanes)) ^ expected);
        }
        even |= odd;
        return ((even[0] | even[1]) & (std::uint64_t{mask} << 32 | mask)) != 0;
    }

    /// The first ink pixel from `from` up to but not including `to`, or `to`.
    int firstInk(const std::uint8_t* row, int from, int to) const {
        while (from + kBlock <= to && !blockHasInk(row, from))
            from += kBlock;
        while (from < to && !isInk(row, from))
            ++from;
        return from;
    }

    /// One past the last ink pixel from `from` up to but not including `to`, or `from`.
    int endOfInk(const std::uint8_t* row, int from, int to) const {
        while (to - kBlock >= from && !blockHasInk(row, to - kBlock))
            to -= kBlock;
        while (to > from && !isInk(row, to - 1))
            --to;
        return to;
    }
};

} // namespace

std::optional<PixelRect> inkBounds(const Image& image, NVMCropMode mode) {
    const InkTest test = InkTest::of(mode);
    const int width = image.width();
    int top = 0;
    while (top < image.height() && test.firstInk(image.row(top), 0, width) == width)
        ++top;
    if (top == image.height()) return std::nullopt;
    int bottom = image.height() - 1;
    while (bottom > top && test.firstInk(image.row(bottom), 0, width) == width)
        --bottom;

    int left = width;
    int right = 0;
    for (int y = top; y <= bottom; ++y) {
        left = test.firstInk(image.row(y), 0, left);
        right = test.endOfInk(image.row(y), right, width);
    }
    return PixelRect{left, top, right - left, bottom - top + 1};
}

} // namespace norvane
