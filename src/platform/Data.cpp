#include <norvane/platform/Data.h>

#include <cstring>

namespace norvane {

void cleanse(std::string& secret) {
    secret.resize(secret.capacity()); // so that what a longer text left behind goes too
    explicit_bzero(secret.data(), secret.size());
    secret.clear();
}

Data Data::secret(std::string bytes) {
    Data data;
    if (!bytes.empty()) {
        // Copied, not moved: a short text lives inside the string object, where a move would leave it.
        auto* kept = new std::string(bytes);
        data.bytes_ = std::shared_ptr<const std::string>(kept, [](const std::string* held) {
            auto* mine = const_cast<std::string*>(held);
            cleanse(*mine);
            delete mine;
        });
    }
    cleanse(bytes);
    return data;
}

} // namespace norvane
