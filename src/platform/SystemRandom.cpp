#include "src/platform/Adapters.h"

#include <norvane/platform/NVMException.h>

#include <sys/random.h>
#include <uuid.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace norvane {

namespace {

class SystemRandom final : public Random {
  public:
    void fill(void* bytes, std::size_t size) override {
        auto* at = static_cast<char*>(bytes);
        while (size > 0) {
            const ssize_t count = getrandom(at, size, 0);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw NVMException("NoRandomness", std::strerror(errno));
            at += count;
            size -= static_cast<std::size_t>(count);
        }
    }

    std::string uuidString() override {
        uuid_t uuid;
        uuid_generate_random(uuid);
        char text[UUID_STR_LEN];
        uuid_unparse_upper(uuid, text);
        return text;
    }
};

bool isHexadecimal(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

} // namespace

std::shared_ptr<Random> makeSystemRandom() { return std::make_shared<SystemRandom>(); }

bool isUuidString(const std::string& text) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return text.size() == kForm.size() &&
           std::equal(text.begin(), text.end(), kForm.begin(), [](char character, char form) {
               return form == '-' ? character == '-' : isHexadecimal(character);
           });
}

} // namespace norvane
