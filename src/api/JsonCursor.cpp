#include "src/api/JsonCursor.h"

#include <norvane/platform/Json.h>

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace norvane {
namespace {

namespace dom = simdjson::dom;

/// Parsers above this size are not kept for the next document.
constexpr std::size_t kKeptCapacity = std::size_t{4} << 20;

/// Answers that hold passwords are short; those do not stay readable in what is kept.
constexpr std::size_t kCleansedSize = std::size_t{64} << 10;

/// The parser refuses integers beyond 64 bits, but takes any decimal number. An exponent that nobody writes
/// turns the one into the other and is recognised again.
constexpr std::string_view kLongIntegerMark = "e+000000";
constexpr std::size_t kLongestSafeInteger = 18;

constexpr std::string_view kNumberCharacters = "0123456789+-.eE";

/// Some services begin their texts with it.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

dom::parser& parserOfThread() {
    thread_local dom::parser parser;
    return parser;
}

/// The parser reads a little beyond the end of a document, whatever is there. On the document's last page it
/// may; memory is mapped by pages of this size at least.
bool mayBeReadBeyondEnd(std::string_view text) {
    constexpr std::uintptr_t kPage = 4096;
    const auto last = reinterpret_cast<std::uintptr_t>(text.data() + text.size() - 1);
    return last % kPage + simdjson::SIMDJSON_PADDING < kPage;
}

/// Any other document gets a copy with room for that.
std::string& bufferOfThread() {
    thread_local std::string buffer;
    return buffer;
}

/// The text with `change` applied to each number outside of strings.
template <class Change>
std::string withNumbers(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size() + 64);
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        if (text[at] == '"') {
            for (++end; end < text.size() && text[end] != '"'; ++end)
                if (text[end] == '\\') ++end;
            end = std::min(end + 1, text.size());
            result.append(text.substr(at, end - at));
        } else if (kNumberCharacters.find(text[at]) != std::string_view::npos) {
            end = std::min(text.find_first_not_of(kNumberCharacters, at), text.size());
            change(text.substr(at, end - at), result);
        } else {
            result += text[end++];
        }
        at = end;
    }
    return result;
}

/// Whether the number is JSON but above all that the parser takes.
bool isTooLarge(std::string_view number) {
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    return error == std::errc::result_out_of_range && end == number.data() + number.size() &&
           number.find("e-") == std::string_view::npos && number.find("E-") == std::string_view::npos;
}

/// With what the parser refuses written so that it does not: long integers marked, and texts for the numbers
/// that no field of a record could hold but as a text.
std::string withReadableNumbers(std::string_view text) {
    return withNumbers(text, [](std::string_view number, std::string& result) {
        if (isTooLarge(number)) {
            result.append("\"").append(number).append("\"");
            return;
        }
        result.append(number);
        if (number.size() > kLongestSafeInteger && number.find_first_of(".eE") == std::string_view::npos)
            result.append(kLongIntegerMark);
    });
}

std::string_view withoutMark(std::string_view number) {
    if (number.ends_with(kLongIntegerMark)) number.remove_suffix(kLongIntegerMark.size());
    return number;
}

std::string withoutMarks(std::string_view text) {
    return withNumbers(text,
                       [](std::string_view number, std::string& result) { result += withoutMark(number); });
}

} // namespace

JsonCursor::JsonCursor(std::string_view text)
    : text_(text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text)
    , parser_(parserOfThread()) {}

JsonCursor::~JsonCursor() {
    if (parser_.capacity() > kKeptCapacity) {
        parser_ = dom::parser();
        bufferOfThread() = std::string();
    } else if (text_.size() <= kCleansedSize && parser_.doc.string_buf) {
        std::string& buffer = bufferOfThread();
        std::fill(buffer.begin(), buffer.end(), '\0');
        // A string takes four more bytes there than it has, and two quotes and a comma less.
        const std::size_t size = std::min(text_.size(), parser_.doc.capacity());
        std::fill_n(parser_.doc.string_buf.get(), size * 5 / 3, std::uint8_t{0});
    }
}

std::optional<dom::element> JsonCursor::root() {
    if (text_.size() > kJsonMaximumSize) return std::nullopt;
    const auto parse = [&](dom::element& element) -> simdjson::error_code {
        if (parser_.capacity() < text_.size() || parser_.max_depth() != kJsonMaximumDepth)
            if (const auto error =
                    parser_.allocate(std::max(text_.size(), std::size_t{256}), kJsonMaximumDepth))
                return error;
        if (!text_.empty() && mayBeReadBeyondEnd(text_))
            return parser_.parse(text_.data(), text_.size(), false).get(element);
        std::string& buffer = bufferOfThread();
        buffer.reserve(text_.size() + simdjson::SIMDJSON_PADDING);
        buffer.assign(text_);
        return parser_.parse(buffer.data(), buffer.size(), false).get(element);
    };
    dom::element element;
    auto error = parse(element);
    if (error == simdjson::NUMBER_ERROR) {
        readableText_ = withReadableNumbers(text_);
        text_ = readableText_;
        error = parse(element);
    }
    if (error) return std::nullopt;
    return element;
}

void JsonCursor::pass(dom::element value) {
    ++token_;
    if (value.is_object()) {
        dom::object object = value.get_object().value_unsafe();
        for (const dom::key_value_pair member : object) {
            token_ += 2;
            pass(member.value);
            ++token_;
        }
        if (object.begin() == object.end()) ++token_;
    } else if (value.is_array()) {
        dom::array array = value.get_array().value_unsafe();
        for (const dom::element element : array) {
            pass(element);
            ++token_;
        }
        if (array.begin() == array.end()) ++token_;
    }
}

std::size_t JsonCursor::offsetOf(std::size_t token) const {
    const auto& implementation = *parser_.implementation;
    if (token >= implementation.n_structural_indexes) return text_.size();
    return std::min<std::size_t>(implementation.structural_indexes[token], text_.size());
}

std::string_view JsonCursor::spelling() const {
    const std::string_view rest = text_.substr(offsetOf(token_));
    const std::string_view token = rest.substr(0, rest.find_first_of(" \t\r\n,:]}"));
    return readableText_.empty() ? token : withoutMark(token);
}

std::string_view JsonCursor::passedText(dom::element value) {
    const std::size_t start = offsetOf(token_);
    const bool isContainer = value.is_object() || value.is_array();
    pass(value);
    const std::size_t end = isContainer ? offsetOf(token_ - 1) + 1 : offsetOf(token_);
    return text_.substr(start, std::max(end, start) - start);
}

std::string JsonCursor::passedSpelling(dom::element value) {
    std::string_view text = passedText(value);
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    return readableText_.empty() ? std::string(text) : withoutMarks(text);
}

} // namespace norvane
