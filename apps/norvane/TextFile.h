#pragma once

#include <norvane/platform/Result.h>

#include <filesystem>
#include <string>

namespace norvane::cli {

/// The bytes of a file that the arguments name; needs no home. Files beyond 64 MiB are refused.
Result<std::string> readTextFile(const std::filesystem::path& file);

} // namespace norvane::cli
