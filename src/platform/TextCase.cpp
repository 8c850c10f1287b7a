#include <norvane/platform/TextCase.h>

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace norvane {

std::string lowercased(std::string_view text) {
    std::string lower;
    icu::UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())})
        .toLower(icu::Locale::getRoot())
        .toUTF8String(lower);
    return lower;
}

} // namespace norvane
