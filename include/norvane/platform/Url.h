#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// An absolute URL. A value; parsing follows RFC 3986 as libcurl reads it. Paths are sent as they stand:
/// nothing folds "." or ".." segments away.
class Url {
  public:
    /// Nothing unless the text is an absolute URL with a scheme and, but for "file", a host; texts with
    /// control characters are refused.
    static std::optional<Url> parse(std::string_view text);
    static Url fromFilePath(std::string_view absolutePath);

    const std::string& absoluteString() const { return text_; }
    std::string scheme() const; ///< lower case
    std::string host() const;
    std::string path() const; ///< percent-escaped as sent, without the query
    int port() const;         ///< the scheme's own when none is given, 0 when that is unknown
    bool isFile() const { return scheme() == "file"; }
    /// The decoded path of a file URL, else the empty text.
    std::string filePath() const;
    /// Whether the host is "localhost", in 127.0.0.0/8 or "[::1]".
    bool isLoopback() const;
    /// Appends a relative reference of path and query (percent-escaped already, no leading "/") to this
    /// address, whose path counts as a folder: a missing last "/" is added first.
    Url appending(std::string_view relativeReference) const;

    friend bool operator==(const Url&, const Url&) = default;

  private:
    explicit Url(std::string text)
        : text_(std::move(text)) {}
    std::string text_;
};

/// Percent-escapes every byte that is not an unreserved character of RFC 3986 (letters, digits, "-._~").
std::string percentEscaped(std::string_view text);

} // namespace norvane
