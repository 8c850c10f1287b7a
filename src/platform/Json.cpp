#include <norvane/platform/Base64.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Json.h>

#include <simdjson.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace norvane {
namespace {

namespace dom = simdjson::dom;

NVMError jsonError(JsonError code, std::string description, std::string path = {}) {
    NVMError error = NVMError::make(std::string(kJsonErrorDomain), static_cast<std::int64_t>(code),
                                    std::move(description));
    if (!path.empty()) error.userInfo.emplace(kJsonPathKey, std::move(path));
    return error;
}

NVMError errorOf(simdjson::error_code code) {
    const std::string description = simdjson::error_message(code);
    switch (code) {
    case simdjson::DEPTH_ERROR:
        return jsonError(JsonError::TooDeep, description);
    case simdjson::NUMBER_ERROR:
        return jsonError(JsonError::BadNumber, description);
    case simdjson::CAPACITY:
    case simdjson::MEMALLOC:
        return jsonError(JsonError::TooLarge, description);
    default:
        return jsonError(JsonError::Malformed, description);
    }
}

/// The parser refuses integers beyond 64 bits. This gives each long one a ".0", which makes it a decimal
/// number; the text is otherwise the same, so a malformed one stays malformed.
std::string withLongIntegersAsDecimals(std::string_view text) {
    constexpr std::size_t kLongestSafe = 18;
    constexpr std::string_view kNumberCharacters = "0123456789+-.eE";
    std::string result;
    result.reserve(text.size() + 64);
    bool inString = false;
    for (std::size_t i = 0; i < text.size();) {
        const char character = text[i];
        if (inString || character == '"') {
            if (character == '"') inString = !inString;
            const std::size_t length = character == '\\' && i + 1 < text.size() ? 2 : 1;
            result.append(text, i, length);
            i += length;
            continue;
        }
        const std::size_t end = std::min(text.find_first_not_of(kNumberCharacters, i), text.size());
        if (end == i) {
            result += character;
            ++i;
            continue;
        }
        const std::string_view number = text.substr(i, end - i);
        result += number;
        if (number.size() > kLongestSafe && number.find_first_of(".eE") == std::string_view::npos)
            result += ".0";
        i = end;
    }
    return result;
}

/// Turns the parser's document into values; `path` follows the way down for the error.
class Converter {
  public:
    Result<Value> convert(dom::element element) {
        switch (element.type()) {
        case dom::element_type::ARRAY:
            return convertArray(dom::array(element));
        case dom::element_type::OBJECT:
            return convertObject(dom::object(element));
        case dom::element_type::INT64:
            return Value(std::int64_t(element));
        case dom::element_type::UINT64:
            return Value(static_cast<double>(std::uint64_t(element)));
        case dom::element_type::DOUBLE:
            return Value(double(element));
        case dom::element_type::STRING:
            return Value(std::string_view(element));
        case dom::element_type::BOOL:
            return Value(bool(element));
        case dom::element_type::NULL_VALUE:
            break;
        }
        return Value();
    }

  private:
    Result<Value> convertArray(dom::array array) {
        Array result;
        result.reserve(array.size());
        for (dom::element child : array) {
            auto value = descend(std::to_string(result.size()), child);
            if (!value) return value;
            result.push_back(std::move(*value));
        }
        return Value(std::move(result));
    }

    Result<Value> convertObject(dom::object object) {
        Dictionary result;
        for (const dom::key_value_pair member : object) {
            auto value = descend(member.key, member.value);
            if (!value) return value;
            if (!result.emplace(member.key, std::move(*value)).second) {
                return jsonError(JsonError::DuplicateKey, "An object names one key twice.",
                                 path_ + "/" + std::string(member.key));
            }
        }
        return Value(std::move(result));
    }

    Result<Value> descend(std::string_view step, dom::element child) {
        if (!child.is_array() && !child.is_object()) return convert(child);
        const std::size_t length = path_.size();
        path_.append("/").append(step);
        auto value = convert(child);
        path_.resize(length);
        return value;
    }

    std::string path_;
};

class Writer {
  public:
    explicit Writer(bool pretty)
        : pretty_(pretty) {}

    void write(const Value& value) {
        if (const Dictionary* dictionary = value.asDictionary()) return writeMembers(*dictionary);
        if (const Array* array = value.asArray()) return writeElements(*array);
        if (const std::string* text = value.asString()) return writeText(*text);
        if (const Date* date = value.asDate()) return writeText(formatIso8601(*date));
        if (const Data* data = value.asData()) return writeText(encodeBase64(data->view()));
        if (value.isBool()) {
            out_ += *value.asBool() ? "true" : "false";
        } else if (value.isNumber() && std::isfinite(*value.asDouble())) {
            out_ += *value.stringValue();
        } else {
            out_ += "null";
        }
    }

    std::string take() { return std::move(out_); }

  private:
    void writeMembers(const Dictionary& dictionary) {
        out_ += '{';
        ++depth_;
        bool first = true;
        for (const auto& [key, value] : dictionary) {
            separate(first);
            writeText(key);
            out_ += pretty_ ? ": " : ":";
            write(value);
        }
        close(first, '}');
    }

    void writeElements(const Array& array) {
        out_ += '[';
        ++depth_;
        bool first = true;
        for (const Value& value : array) {
            separate(first);
            write(value);
        }
        close(first, ']');
    }

    void separate(bool& first) {
        if (!first) out_ += ',';
        first = false;
        breakLine();
    }

    void close(bool empty, char bracket) {
        --depth_;
        if (!empty) breakLine();
        out_ += bracket;
    }

    void breakLine() {
        if (!pretty_) return;
        out_ += '\n';
        out_.append(2 * depth_, ' ');
    }

    void writeText(std::string_view text) {
        if (simdjson::validate_utf8(text.data(), text.size())) return writeValidText(text);
        std::string mended;
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())))
            .toUTF8String(mended);
        writeValidText(mended);
    }

    void writeValidText(std::string_view text) {
        constexpr std::string_view kHex = "0123456789abcdef";
        out_ += '"';
        for (const char character : text) {
            const auto byte = static_cast<unsigned char>(character);
            if (character == '"' || character == '\\') {
                out_.append({'\\', character});
            } else if (character == '\n') {
                out_ += "\\n";
            } else if (byte < 0x20) {
                out_.append("\\u00").append({kHex[byte >> 4], kHex[byte & 15]});
            } else {
                out_ += character;
            }
        }
        out_ += '"';
    }

    bool pretty_;
    std::size_t depth_ = 0;
    std::string out_;
};

simdjson::error_code parse(dom::parser& parser, std::string_view text, dom::element& document) {
    if (const auto error = parser.allocate(std::max(text.size(), std::size_t{256}), kJsonMaximumDepth))
        return error;
    return parser.parse(text.data(), text.size(), true).get(document);
}

/// The root; it lives as long as the parser.
Result<dom::element> parse(dom::parser& parser, std::string_view text) {
    if (text.size() > kJsonMaximumSize) return jsonError(JsonError::TooLarge, "The document is too large.");
    dom::element document;
    auto error = parse(parser, text, document);
    if (error == simdjson::NUMBER_ERROR) error = parse(parser, withLongIntegersAsDecimals(text), document);
    if (error) return errorOf(error);
    return document;
}

} // namespace

Result<Value> parseJson(std::string_view text) {
    dom::parser parser;
    const auto document = parse(parser, text);
    if (!document) return document.error();
    return Converter().convert(*document);
}

Result<std::vector<std::pair<std::string, Value>>> parseJsonMembers(std::string_view text,
                                                                    std::string_view pointer) {
    dom::parser parser;
    const auto document = parse(parser, text);
    if (!document) return document.error();
    std::vector<std::pair<std::string, Value>> members;
    dom::object object;
    if (document->at_pointer(pointer).get(object)) return members;
    for (const dom::key_value_pair member : object) {
        auto value = Converter().convert(member.value);
        if (!value) return value.error();
        members.emplace_back(member.key, std::move(*value));
    }
    return members;
}

std::string writeJson(const Value& value, bool pretty) {
    Writer writer(pretty);
    writer.write(value);
    return writer.take();
}

} // namespace norvane
