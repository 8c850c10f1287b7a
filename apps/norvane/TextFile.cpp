#include "TextFile.h"

#include <norvane/platform/Json.h>

#include <fstream>

namespace norvane::cli {

Result<std::string> readTextFile(const std::filesystem::path& file) {
    const auto wrong = [&](const std::string& what) {
        return NVMError::make("norvane.command", 0, file.string() + ": " + what + ".", "FILE_UNREADABLE");
    };
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    char piece[1 << 16];
    while (stream && text.size() <= kJsonMaximumSize) {
        stream.read(piece, sizeof piece);
        text.append(piece, static_cast<std::size_t>(stream.gcount()));
    }
    if (text.size() > kJsonMaximumSize) return wrong("the file is too large");
    if (!stream.eof()) return wrong("the file cannot be read");
    return text;
}

} // namespace norvane::cli
