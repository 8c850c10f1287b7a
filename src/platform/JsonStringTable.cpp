#include "src/platform/Adapters.h"
#include "src/platform/EmbeddedStrings.h"

#include <norvane/platform/Json.h>
#include <norvane/platform/NVMException.h>

#include <unicode/locid.h>

namespace norvane {

namespace {

constexpr const char* kFallback = "en";

class JsonStringTable final : public StringTable {
  public:
    explicit JsonStringTable(const icu::Locale& locale) {
        add(kFallback);
        add(locale.getLanguage());
        add(std::string(locale.getLanguage()) + "_" + locale.getCountry());
    }

    std::string text(std::string_view key) const override {
        const auto found = texts_.find(key);
        return found == texts_.end() ? std::string(key) : found->second;
    }

  private:
    /// Lays the texts of a locale, if there are any, over those before.
    void add(std::string_view locale) {
        for (const EmbeddedStrings& strings : embeddedStrings()) {
            if (strings.locale != locale) continue;
            const auto json = parseJson(strings.json);
            const Dictionary* texts = json ? json->asDictionary() : nullptr;
            if (!texts) throw NVMException("InvalidStringTable", "no string table: " + std::string(locale));
            for (const auto& [key, text] : *texts)
                texts_[key] = text.stringValue().value_or(key);
        }
    }

    std::map<std::string, std::string, std::less<>> texts_;
};

} // namespace

std::shared_ptr<StringTable> makeJsonStringTable(const std::optional<std::string>& locale) {
    return std::make_shared<JsonStringTable>(locale ? icu::Locale::createCanonical(locale->c_str())
                                                    : icu::Locale::getDefault());
}

} // namespace norvane
