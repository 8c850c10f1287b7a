#include <norvane/formula/NVM_NVCondition.h>
#include <norvane/platform/NVMException.h>

#include <unicode/locid.h>
#include <unicode/regex.h>

#include <memory>

namespace norvane {
namespace {

constexpr const char* kEmailPattern =
    R"RE(((([^<>()\[\]\.,;:\s@"]+(\.[^<>()\[\]\.,;:\s@"]+)*)|(".+"))@)RE"
    R"RE(((\[[0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3}\.[0-9]{1,3}\])|(([a-zA-Z\-0-9]+\.)+[a-zA-Z]{2,}))))RE";

/// In the engine's own unit, about a millisecond each.
constexpr std::int32_t kTimeLimit = 20;

const icu::RegexPattern& emailPattern() {
    static const std::unique_ptr<icu::RegexPattern> pattern = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::RegexPattern> compiled(
            icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(kEmailPattern), 0, status));
        if (U_FAILURE(status)) throw NVMException("EmailAddress", "The pattern does not compile.");
        return compiled;
    }();
    return *pattern;
}

} // namespace

bool nvm_stringIsValidEmail(std::string_view text) {
    icu::UnicodeString lower =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    lower.toLower(icu::Locale::getRoot());
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::RegexMatcher> matcher(emailPattern().matcher(lower, status));
    if (U_FAILURE(status)) return false;
    matcher->setTimeLimit(kTimeLimit, status);
    const bool matches = matcher->matches(status);
    return U_SUCCESS(status) && matches;
}

} // namespace norvane
