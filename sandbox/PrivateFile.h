#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace norvane::sandbox {

/// Makes the folder and those above it; the new ones are the owner's alone (0700).
void makePrivateFolder(const std::filesystem::path& folder);

/// Writes a file that only its owner may read (0600), beside and then renamed, so that a reader sees either
/// the old bytes or the new. Throws std::runtime_error with the path and the cause.
void writePrivateFile(const std::filesystem::path& file, std::string_view bytes);

/// The file's bytes; nothing when it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& file);

} // namespace norvane::sandbox
