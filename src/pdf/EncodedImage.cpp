#include "src/pdf/EncodedImage.h"

#include <norvane/platform/Files.h>

#include <zlib.h>

#include <algorithm>
#include <list>
#include <mutex>
#include <new>
#include <utility>

namespace norvane {
namespace {

struct Planes {
    std::string colors;
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
                  reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), Z_BEST_COMPRESSION) != Z_OK)
        throw std::bad_alloc();
    output.resize(size);
    return output;
}

std::string digestOf(const Planes& planes, int width) {
    return sha256Hex(planes.colors) + sha256Hex(planes.alpha) + "/" + std::to_string(width);
}

std::shared_ptr<const EncodedImage> encode(const Planes& planes, std::string digest) {
    auto encoded = std::make_shared<EncodedImage>();
    encoded->colors = deflated(planes.colors);
    if (!planes.isOpaque) encoded->alpha = deflated(planes.alpha);
    encoded->isGrey = planes.isGrey;
    encoded->digest = std::move(digest);
    return encoded;
}

/// The images encoded last. An entry lives no longer than the pixels it was made of.
class EncodedImages {
  public:
    std::shared_ptr<const EncodedImage> find(const Image& image) {
        return findIf([&](const Entry& entry) { return entry.isOf(image); });
    }
    std::shared_ptr<const EncodedImage> find(const std::string& digest) {
        return findIf([&](const Entry& entry) { return entry.encoded->digest == digest; });
    }

    void keep(const Image& image, std::shared_ptr<const EncodedImage> encoded) {
        const std::scoped_lock guard(mutex_);
        entries_.push_front(
            {image.buffer(), image.row(0), image.width(), image.height(), std::move(encoded)});
        if (entries_.size() > kCapacity) entries_.pop_back();
    }

  private:
    struct Entry {
        std::weak_ptr<const std::uint8_t[]> buffer;
        const std::uint8_t* firstRow; ///< regions share a buffer
        int width;
        int height;
        std::shared_ptr<const EncodedImage> encoded;

        bool isOf(const Image& image) const {
            return firstRow == image.row(0) && width == image.width() && height == image.height() &&
                   buffer.lock() == image.buffer();
        }
    };

    template <class Predicate>
    std::shared_ptr<const EncodedImage> findIf(const Predicate& isWanted) {
        const std::scoped_lock guard(mutex_);
        entries_.remove_if([](const Entry& entry) { return entry.buffer.expired(); });
        const auto found = std::find_if(entries_.begin(), entries_.end(), isWanted);
        if (found == entries_.end()) return nullptr;
        entries_.splice(entries_.begin(), entries_, found);
        return entries_.front().encoded;
    }

    static constexpr std::size_t kCapacity = 64; // looks, and some signatures
    std::mutex mutex_;                           ///< guards `entries_`
    std::list<Entry> entries_;                   ///< latest first
};

} // namespace

std::shared_ptr<const EncodedImage> encodedImage(const Image& image) {
    static EncodedImages images;
    if (auto encoded = images.find(image)) return encoded;
    const Planes planes = planesOf(image);
    std::string digest = digestOf(planes, image.width());
    auto encoded = images.find(digest);
    if (!encoded) encoded = encode(planes, std::move(digest));
    images.keep(image, encoded);
    return encoded;
}

} // namespace norvane
