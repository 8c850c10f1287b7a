#include "src/sdk/SettingsArchive.h"

#include <norvane/platform/Json.h>

namespace norvane {
namespace {

constexpr std::int64_t kVersion = 1;

} // namespace

std::string archivedSettings(const Dictionary& settings) {
    return writeJson(Dictionary{{"version", kVersion}, {"settings", settings}});
}

std::optional<Dictionary> unarchivedSettings(std::string_view archive) {
    const Result<Value> parsed = parseJson(archive);
    if (!parsed || (*parsed)["version"].asInteger() != kVersion) return std::nullopt;
    const Dictionary* settings = (*parsed)["settings"].asDictionary();
    return settings ? std::optional(*settings) : std::nullopt;
}

} // namespace norvane
