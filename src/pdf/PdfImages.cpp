#include "src/pdf/EncodedImage.h"
#include "src/pdf/State.h"

namespace norvane {
namespace {

QPDFObjectHandle newImageStream(QPDF& qpdf, const Image& image, const std::string& deflated,
                                const char* colorSpace) {
    QPDFObjectHandle stream = qpdf.newStream();
    stream.replaceStreamData(deflated, QPDFObjectHandle::newName("/FlateDecode"),
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

int addImage(QPDF& qpdf, const Image& image, const EncodedImage& encoded) {
    const char* colorSpace = encoded.isGrey ? "/DeviceGray" : "/DeviceRGB";
    QPDFObjectHandle stream = newImageStream(qpdf, image, encoded.colors, colorSpace);
    if (!encoded.alpha.empty())
        stream.getDict().replaceKey("/SMask", newImageStream(qpdf, image, encoded.alpha, "/DeviceGray"));
    return stream.getObjectID();
}

} // namespace

QPDFObjectHandle PdfDocument::State::imageObject(const Image& image) {
    const BufferKey key{image.row(0), image.bytesPerRow(), image.width(), image.height()};
    KnownBuffer& known = imagesByBuffer[key];
    if (known.buffer.lock() != image.buffer()) {
        const auto encoded = encodedImage(image);
        int& number = imagesByDigest[encoded->digest];
        if (number == 0) number = addImage(*qpdf, image, *encoded);
        known = {image.buffer(), number};
    }
    return qpdf->getObjectByID(known.objectNumber, 0);
}

} // namespace norvane
