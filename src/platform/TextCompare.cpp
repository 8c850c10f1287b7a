#include <norvane/platform/NVMException.h>
#include <norvane/platform/TextCompare.h>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace norvane {
namespace {

const icu::Normalizer2& decomposer() {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status)) throw NVMException("TextCompare", "Unicode data is missing.");
    return *normalizer;
}

icu::UnicodeString decomposed(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result = decomposer().normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

icu::UnicodeString withoutMarks(const icu::UnicodeString& text) {
    icu::UnicodeString result;
    for (std::int32_t index = 0; index < text.length(); index = text.moveIndex32(index, 1)) {
        const UChar32 character = text.char32At(index);
        if (u_getCombiningClass(character) == 0) result.append(character);
    }
    return result;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string asciiFolded(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    return result;
}

icu::UnicodeString folded(std::string_view text, Diacritics diacritics) {
    icu::UnicodeString result =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    result.foldCase(U_FOLD_CASE_DEFAULT);
    result = decomposed(result);
    if (diacritics == Diacritics::Ignore) result = withoutMarks(result);
    // Decomposing can uncover letters that fold once more.
    return decomposed(result.foldCase(U_FOLD_CASE_DEFAULT));
}

bool isSpace(UChar32 character) {
    return character == '\t' || (character >= 0x0A && character <= 0x0D) || character == 0x85 ||
           (U_GET_GC_MASK(character) & U_GC_Z_MASK) != 0;
}

} // namespace

std::string foldedText(std::string_view text, Diacritics diacritics) {
    if (isAscii(text)) return asciiFolded(text);
    std::string result;
    folded(text, diacritics).toUTF8String(result);
    return result;
}

bool foldedEqual(std::string_view a, std::string_view b, Diacritics diacritics) {
    return a == b || foldedText(a, diacritics) == foldedText(b, diacritics);
}

bool nvm_caseAndDiacriticInsensitivelyMatches(const std::optional<std::string>& a,
                                              const std::optional<std::string>& b) {
    return a && b && foldedEqual(*a, *b, Diacritics::Ignore);
}

bool foldedContains(std::string_view text, std::string_view part) {
    return foldedText(text, Diacritics::Ignore).find(foldedText(part, Diacritics::Ignore)) !=
           std::string::npos;
}

std::string_view trimmed(std::string_view text) {
    std::int32_t begin = 0;
    auto end = static_cast<std::int32_t>(text.size());
    while (begin < end) {
        std::int32_t next = begin;
        UChar32 character = 0;
        U8_NEXT(text.data(), next, end, character);
        if (!isSpace(character)) break;
        begin = next;
    }
    while (end > begin) {
        std::int32_t previous = end;
        UChar32 character = 0;
        U8_PREV(text.data(), begin, previous, character);
        if (!isSpace(character)) break;
        end = previous;
    }
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

bool isBlank(const std::optional<std::string>& text) { return !text || trimmed(*text).empty(); }

std::size_t codePointLength(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < text.size(); ++count)
        U8_FWD_1(text.data(), index, text.size());
    return count;
}

std::size_t codePointOffset(std::string_view text, std::size_t count) {
    std::size_t index = 0;
    for (; count > 0 && index < text.size(); --count)
        U8_FWD_1(text.data(), index, text.size());
    return index;
}

} // namespace norvane
