#include "sandbox/Multipart.h"

#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {

constexpr std::size_t kMaximumParts = 10'000;
constexpr std::size_t kMaximumHeadBytes = 16'384;
constexpr std::size_t kMaximumBoundaryBytes = 70;

bool isTokenCharacter(char character) {
    static constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
    return isAlphanumeric(character) || kMarks.find(character) != std::string_view::npos;
}

/// Reads a text from front to back.
class Cursor {
  public:
    explicit Cursor(std::string_view rest)
        : rest_(rest) {}
    bool atEnd() const { return rest_.empty(); }
    bool skip(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }
    void skipBlanks() {
        while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t'))
            rest_.remove_prefix(1);
    }
    std::string token() {
        std::size_t length = 0;
        while (length < rest_.size() && isTokenCharacter(rest_[length]))
            ++length;
        return take(length);
    }
    std::string until(char end) { return take(std::min(rest_.find(end), rest_.size())); }
    /// What stands between two double quotes; a backslash takes the next character as it is.
    bool quoted(std::string& value) {
        if (!skip("\"")) return false;
        while (!rest_.empty() && rest_.front() != '"') {
            if (rest_.front() == '\\' && rest_.size() > 1) rest_.remove_prefix(1);
            value += rest_.front();
            rest_.remove_prefix(1);
        }
        return skip("\"");
    }

  private:
    std::string take(std::size_t length) {
        std::string taken(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return taken;
    }
    std::string_view rest_;
};

/// Reads the parts between the boundaries; the first fault ends it.
class BodyReader {
  public:
    BodyReader(std::string_view boundary, std::string_view body)
        : delimiter_("--" + std::string(boundary))
        , body_(body) {}

    MultipartResult read() {
        if (delimiter_.size() == 2) return failed("the boundary is missing");
        if (!body_.starts_with(delimiter_)) return failed("the body does not begin with the boundary");
        position_ = delimiter_.size();
        while (result_.ok() && !atLastBoundary())
            readPart();
        return std::move(result_);
    }

  private:
    bool atLastBoundary() {
        const auto rest = body_.substr(position_);
        if (!rest.starts_with("--")) return false;
        if (rest != "--" && rest != "--\r\n") failed("something follows the last boundary");
        if (result_.parts.empty()) failed("there is no part");
        return true;
    }

    void readPart() {
        if (result_.parts.size() == kMaximumParts) return (void)failed("there are too many parts");
        if (!body_.substr(position_).starts_with("\r\n"))
            return (void)failed("a boundary is not followed by CR LF");
        position_ += 2;
        MultipartPart part;
        if (!readHead(part)) return;
        const auto end = body_.find("\r\n" + delimiter_, position_);
        if (end == std::string_view::npos) return (void)failed("a part has no boundary after it");
        part.body = body_.substr(position_, end - position_);
        position_ = end + 2 + delimiter_.size();
        result_.parts.push_back(std::move(part));
    }

    bool readHead(MultipartPart& part) {
        const auto end = body_.substr(0, position_ + kMaximumHeadBytes).find("\r\n\r\n", position_);
        if (body_.substr(position_).starts_with("\r\n")) return failed("a part has no headers").ok();
        if (end == std::string_view::npos) return failed("the headers of a part do not end").ok();
        part.head = body_.substr(position_, end + 2 - position_);
        position_ = end + 4;
        for (auto rest = part.head; !rest.empty();) {
            const auto line = rest.substr(0, rest.find("\r\n"));
            rest.remove_prefix(line.size() + 2);
            const auto colon = line.find(':');
            Cursor name(line.substr(0, colon));
            std::string token = name.token();
            if (colon == std::string_view::npos || token.empty() || !name.atEnd() || hasControls(line))
                return failed("a header line of a part is malformed").ok();
            part.headers.emplace_back(std::move(token), std::string(trimmed(line.substr(colon + 1))));
        }
        return true;
    }

    const MultipartResult& failed(const std::string& why) {
        if (result_.error.empty())
            result_.error = "part " + std::to_string(result_.parts.size() + 1) + ", byte " +
                            std::to_string(position_) + ": " + why;
        return result_;
    }

    std::string delimiter_;
    std::string_view body_;
    std::size_t position_ = 0;
    MultipartResult result_;
};

} // namespace

HeaderValue parseHeaderValue(std::string_view text, bool quotedOnly) {
    HeaderValue result;
    Cursor cursor(text);
    result.value = std::string(trimmed(cursor.until(';')));
    while (!cursor.atEnd()) {
        if (!cursor.skip(quotedOnly ? "; " : ";")) result.error = "a separator is not '; '";
        if (!quotedOnly) cursor.skipBlanks();
        HeaderParameter parameter;
        parameter.first = cursor.token();
        const bool named = !parameter.first.empty() && cursor.skip("=");
        if (!named) result.error = "a parameter has no name";
        if (named && !cursor.quoted(parameter.second)) {
            parameter.second = cursor.token();
            if (quotedOnly || parameter.second.empty()) result.error = "a parameter is not quoted";
        }
        if (!quotedOnly) cursor.skipBlanks();
        if (!result.error.empty()) return result;
        result.parameters.push_back(std::move(parameter));
    }
    return result;
}

const std::string* MultipartPart::header(std::string_view name) const {
    for (const auto& [key, value] : headers)
        if (equalsIgnoringCase(key, name)) return &value;
    return nullptr;
}

MultipartResult parseMultipart(std::string_view boundary, std::string_view body) {
    return BodyReader(boundary, body).read();
}

std::string multipartBoundary(std::string_view contentType) {
    const auto type = parseHeaderValue(contentType, false);
    if (!type.error.empty() || !equalsIgnoringCase(type.value, "multipart/form-data")) return {};
    for (const auto& [name, value] : type.parameters)
        if (equalsIgnoringCase(name, "boundary"))
            return value.size() > kMaximumBoundaryBytes || hasControls(value) ? std::string() : value;
    return {};
}

} // namespace norvane::sandbox
