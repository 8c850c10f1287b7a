#include <norvane/signature/Image.h>
#include <norvane/signature/NVMSignatureCleanup.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <numeric>

// Cropping a photographed page to its ink, beside one pass that reads the same bytes.

namespace norvane::bench {

namespace {

/// 4000 x 3000 pixels, white but for a signature's worth of ink in the middle.
const Image& photo() {
    static const Image image = Image::generate(4000, 3000, 1, [](std::uint8_t* pixels) {
        std::memset(pixels, 0xFF, std::size_t{4000} * 3000 * 4);
        for (int y = 1200; y < 1700; ++y)
            for (int x = 900 + y % 37; x < 3000; x += 23)
                std::memset(
                    pixels +
                        (std::size_t{4000} * static_cast<std::size_t>(y) + static_cast<std::size_t>(x)) * 4,
                    0, 3);
    });
    return image;
}

void cropKit(benchmark::State& state) {
    const Image& image = photo();
    for (auto _ : state) {
        auto cropped = nvm_imageWithWhiteCropped(image);
        if (!cropped) state.SkipWithError("no ink found");
        benchmark::DoNotOptimize(cropped);
    }
}

void cropLimit(benchmark::State& state) {
    const Image& image = photo();
    const auto* bytes = image.row(0);
    const std::size_t words =
        image.bytesPerRow() * static_cast<std::size_t>(image.height()) / sizeof(std::uint64_t);
    for (auto _ : state) {
        std::uint64_t sum = 0;
        for (std::size_t index = 0; index < words; ++index) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes + index * sizeof word, sizeof word);
            sum += word;
        }
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(cropKit)->Name("crop 12 megapixels : one reading pass/kit")->Unit(benchmark::kMillisecond);
BENCHMARK(cropLimit)->Name("crop 12 megapixels : one reading pass/limit")->Unit(benchmark::kMillisecond);

} // namespace

} // namespace norvane::bench
