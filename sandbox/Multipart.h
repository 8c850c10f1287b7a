#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane::sandbox {

/// A parameter of a header value, such as name="(null)"; in the order in which it came.
using HeaderParameter = std::pair<std::string, std::string>;

/// "form-data; name=\"a\"" taken apart.
struct HeaderValue {
    std::string value; ///< what stands before the first semicolon
    std::vector<HeaderParameter> parameters;
    std::string error; ///< why the text is no such value; empty when it is one
};

/// Reads a header value with parameters. `quotedOnly`: parameter values must stand in double quotes and
/// parameters be separated by exactly a semicolon and a blank.
HeaderValue parseHeaderValue(std::string_view text, bool quotedOnly);

struct MultipartPart {
    std::vector<std::pair<std::string, std::string>> headers; ///< as received, in order
    std::string_view head; ///< the header lines as received, inside the body given to parseMultipart
    std::string_view body; ///< inside the body given to parseMultipart
    /// The first header of that name, ignoring case; null when there is none.
    const std::string* header(std::string_view name) const;
};

struct MultipartResult {
    std::vector<MultipartPart> parts;
    std::string error; ///< where and why the body is malformed; empty when it is whole
    bool ok() const { return error.empty(); }
};

/// Takes a multipart body apart, strictly: it begins with the first boundary (no preamble), every line of it
/// ends in CR LF, every part has at least one header, and nothing but an optional CR LF follows the last
/// boundary. Any bytes may be given; the result's views point into `body`, which must outlive it.
MultipartResult parseMultipart(std::string_view boundary, std::string_view body);

/// The boundary of a "multipart/form-data; boundary=..." content type; empty when it has none or a bad one.
std::string multipartBoundary(std::string_view contentType);

} // namespace norvane::sandbox
