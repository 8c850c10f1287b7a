#include "src/pdf/State.h"

#include <norvane/platform/Files.h>

#include <zlib.h>

#include <algorithm>
#include <new>
#include <string>

namespace norvane {
namespace {

struct Planes {
    std::string colors; ///< three bytes a pixel, or one where all pixels are grey, as most ink is
    std::string alpha;
    bool isGrey = true;
    bool isOpaque = true;
};

void inspect(const Image& image, Planes& planes) {
    for (int y = 0; y < image.height(); ++y) {
        const std::uint8_t* source = image.row(y);
        for (int x = 0; x < image.width(); ++x, source += 4) {
            planes.isOpaque = planes.isOpaque && source[3] == 255;
            planes.isGrey =
                planes.isGrey && (source[3] == 0 || (source[0] == source[1] && source[1] == source[2]));
        }
    }
}

Planes planesOf(const Image& image) {
    Planes planes;
    inspect(image, planes);
    const auto width = static_cast<std::size_t>(image.width());
    const std::size_t pixels = width * static_cast<std::size_t>(image.height());
    const std::size_t components = planes.isGrey ? 1 : 3;
    planes.colors.resize(pixels * components);
    planes.alpha.resize(pixels);
    char* color = planes.colors.data();
    char* alpha = planes.alpha.data();
    for (int y = 0; y < image.height(); ++y) {
        const std::uint8_t* source = image.row(y);
        for (std::size_t x = 0; x < width; ++x, source += 4, color += components) {
            // Viewers blend the colours of neighbours when they scale: unseen pixels take the paper's.
            if (source[3] == 0)
                std::fill_n(color, components, '\xFF');
            else
                std::copy_n(source, components, color);
            *alpha++ = static_cast<char>(source[3]);
        }
    }
    return planes;
}

std::string deflated(const std::string& bytes) {
    uLongf size = compressBound(bytes.size());
    std::string output(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(output.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), 9) != Z_OK)
        throw std::bad_alloc();
    output.resize(size);
    return output;
}

QPDFObjectHandle newImageStream(QPDF& qpdf, const Image& image, const std::string& samples,
                                const char* colorSpace) {
    QPDFObjectHandle stream = qpdf.newStream();
    stream.replaceStreamData(deflated(samples), QPDFObjectHandle::newName("/FlateDecode"),
                             QPDFObjectHandle::newNull());
    QPDFObjectHandle dictionary = stream.getDict();
    dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
    dictionary.replaceKey("/Width", QPDFObjectHandle::newInteger(image.width()));
    dictionary.replaceKey("/Height", QPDFObjectHandle::newInteger(image.height()));
    dictionary.replaceKey("/ColorSpace", QPDFObjectHandle::newName(colorSpace));
    dictionary.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    return stream;
}

int addImage(QPDF& qpdf, const Image& image, const Planes& planes) {
    const char* colorSpace = planes.isGrey ? "/DeviceGray" : "/DeviceRGB";
    QPDFObjectHandle stream = newImageStream(qpdf, image, planes.colors, colorSpace);
    if (!planes.isOpaque)
        stream.getDict().replaceKey("/SMask", newImageStream(qpdf, image, planes.alpha, "/DeviceGray"));
    return stream.getObjectID();
}

std::string digestOf(const Image& image, const Planes& planes) {
    return sha256Hex(planes.colors) + sha256Hex(planes.alpha) + "/" + std::to_string(image.width());
}

} // namespace

PdfImage PdfDocument::imageFor(const Image& image) {
    if (image.isNull()) return PdfImage();
    const auto guard = lock();
    const State::BufferKey key{image.row(0), image.bytesPerRow(), image.width(), image.height()};
    State::KnownBuffer& known = state_->imagesByBuffer[key];
    if (known.buffer.lock() != image.buffer()) {
        const Planes planes = planesOf(image);
        int& number = state_->imagesByDigest[digestOf(image, planes)];
        if (number == 0) number = addImage(*state_->qpdf, image, planes);
        known = {image.buffer(), number};
    }
    return PdfImage(known.objectNumber);
}

} // namespace norvane
