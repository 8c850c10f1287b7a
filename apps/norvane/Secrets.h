#pragma once

#include <string>

namespace norvane::cli {

/// The secret in the environment variable, else one typed at the terminal without echo, else the empty text.
/// Never from an argument: arguments are there for every process to see.
std::string secretFrom(const char* variable, const std::string& prompt);

} // namespace norvane::cli
