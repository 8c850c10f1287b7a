#include <norvane/signature/Image.h>

#include <png.h>

#include <array>
#include <csetjmp>
#include <cstring>
#include <string>
#include <vector>

namespace norvane {
namespace {

NVMError imageError(ImageErrorCode code, const char* description, const char* reason) {
    return NVMError::make(std::string(kImageErrorDomain), static_cast<std::int64_t>(code), description,
                          reason);
}

std::uint32_t bigEndian32(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
           bytes[3];
}

/// Checks what the header claims against the bounds and against the number of bytes that follow.
Failure checkHeader(const Data& png) {
    static constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    constexpr std::size_t kHeaderEnd = 8 + 8 + 13 + 4;
    const std::uint8_t* bytes = png.data();
    if (png.size() < kHeaderEnd || std::memcmp(bytes, kSignature.data(), kSignature.size()) != 0 ||
        std::memcmp(bytes + 12, "IHDR", 4) != 0)
        return imageError(ImageErrorCode::NotPng, "The image is not a PNG.", "IMAGE_NOT_PNG");

    const std::uint64_t width = bigEndian32(bytes + 16);
    const std::uint64_t height = bigEndian32(bytes + 20);
    const std::uint64_t bitDepth = bytes[24];
    const bool hasColor = (bytes[25] & 2) != 0 && (bytes[25] & 1) == 0;
    const std::uint64_t channels = (hasColor ? 3u : 1u) + ((bytes[25] & 4) != 0 ? 1u : 0u);
    if (width > Image::kMaximumSide || height > Image::kMaximumSide ||
        width * height > static_cast<std::uint64_t>(Image::kMaximumPixels))
        return imageError(ImageErrorCode::TooLarge, "The image is too large.", "IMAGE_TOO_LARGE");

    constexpr std::uint64_t kHighestDeflateRatio = 1040;
    if (height * (width * channels * bitDepth / 8) / kHighestDeflateRatio > png.size())
        return imageError(ImageErrorCode::Damaged, "The image is damaged.", "IMAGE_DAMAGED");
    return {};
}

struct PngHandle {
    png_image image{};
    PngHandle() { image.version = PNG_IMAGE_VERSION; }
    PngHandle(const PngHandle&) = delete;
    PngHandle& operator=(const PngHandle&) = delete;
    ~PngHandle() { png_image_free(&image); }
};

void appendBytes(png_structp png, png_bytep bytes, png_size_t size) {
    static_cast<std::string*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

/// Returns whether libpng got through. No object with a destructor lives here: an error leaves by longjmp.
bool writePng(png_structp png, png_infop info, const Image& image, std::string& output, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_write_fn(png, &output, appendBytes, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()), static_cast<png_uint_32>(image.height()),
                 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, 9);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, info);
    return true;
}

} // namespace

Result<Image> Image::decodePng(const Data& png, double scale) {
    if (auto failure = checkHeader(png)) return *failure;
    PngHandle handle;
    bool isDecoded = png_image_begin_read_from_memory(&handle.image, png.data(), png.size()) != 0;
    Image image;
    if (isDecoded) {
        handle.image.format = PNG_FORMAT_RGBA;
        image = generate(static_cast<int>(handle.image.width), static_cast<int>(handle.image.height), scale,
                         [&](std::uint8_t* pixels) {
                             isDecoded =
                                 png_image_finish_read(&handle.image, nullptr, pixels, 0, nullptr) != 0;
                         });
    }
    if (!isDecoded || image.isNull())
        return imageError(ImageErrorCode::Damaged, "The image is damaged.", "IMAGE_DAMAGED");
    return image;
}

Data Image::pngData() const {
    if (isNull()) return {};
    std::vector<png_bytep> rows;
    rows.reserve(static_cast<std::size_t>(height_));
    for (int y = 0; y < height_; ++y)
        rows.push_back(const_cast<png_bytep>(row(y)));

    std::string output;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    const bool isWritten = info && writePng(png, info, *this, output, rows.data());
    png_destroy_write_struct(&png, &info);
    if (!isWritten) throw std::bad_alloc(); // writing to memory has no other way to fail
    return Data(std::move(output));
}

} // namespace norvane
