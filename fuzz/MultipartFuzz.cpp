#include "sandbox/Multipart.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using norvane::sandbox::multipartBoundary;
using norvane::sandbox::parseHeaderValue;
using norvane::sandbox::parseMultipart;

/// The first line of the input is the boundary, the rest the body. What is accepted must be the parts and
/// nothing else: put together again they are the body.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto lineEnd = input.find('\n');
    const std::string_view boundary = input.substr(0, lineEnd);
    const std::string_view body = lineEnd == std::string_view::npos ? "" : input.substr(lineEnd + 1);
    multipartBoundary(boundary);
    const auto result = parseMultipart(boundary, body);
    std::string whole;
    for (const auto& part : result.parts) {
        whole.append("--").append(boundary).append("\r\n");
        whole.append(part.head).append("\r\n").append(part.body).append("\r\n");
        for (const auto& [name, value] : part.headers)
            for (const bool quotedOnly : {false, true})
                parseHeaderValue(value, quotedOnly);
    }
    whole.append("--").append(boundary).append("--");
    if (result.ok() && body != whole && body != whole + "\r\n") std::abort();
    return 0;
}
