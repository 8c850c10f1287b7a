#pragma once

#include <simdjson.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// One JSON document, parsed and validated as a whole, and the place that its reader has reached. The reader
/// visits every value in the document's order and passes it here, so that each value's own spelling is at
/// hand (the parser itself keeps numbers as binary only). One at a time on a thread.
class JsonCursor {
  public:
    /// The text must outlive the cursor.
    explicit JsonCursor(std::string_view text);
    ~JsonCursor();
    JsonCursor(const JsonCursor&) = delete;
    JsonCursor& operator=(const JsonCursor&) = delete;

    /// The root; nothing when the text is no JSON, too large or too deep.
    std::optional<simdjson::dom::element> root();

    /// A structural character, a key or a scalar counts one token.
    void passTokens(std::size_t count) { token_ += count; }
    void pass(simdjson::dom::element value);
    /// The scalar that comes next, as it is spelt.
    std::string_view spelling() const;
    /// Passes the value and gives its text; that of a string may have what follows it up to the next token.
    std::string_view passedText(simdjson::dom::element value);
    /// Passes the value and gives its text, as it came.
    std::string passedSpelling(simdjson::dom::element value);

  private:
    std::size_t offsetOf(std::size_t token) const;

    std::string_view text_;
    std::string readableText_; ///< the text, where the given one had numbers that the parser refuses
    simdjson::dom::parser& parser_;
    std::size_t token_ = 0;
};

} // namespace norvane
