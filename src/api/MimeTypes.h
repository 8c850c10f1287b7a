#pragma once

#include <string_view>

namespace norvane {

/// The MIME type of files of that extension (without its dot, in either case), or "application/octet-stream".
std::string_view mimeTypeForExtension(std::string_view extension);

} // namespace norvane
