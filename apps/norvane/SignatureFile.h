#pragma once

#include <norvane/platform/Result.h>
#include <norvane/signature/Image.h>

#include <filesystem>

namespace norvane::cli {

/// A signature from a file: a PNG, or strokes {"color": "black|blue|red", "width": 6, "strokes": [[[x, y, t],
/// ...],
/// ...]} in points and seconds, which are drawn as a finger would. Cropped to the ink.
Result<Image> readSignatureFile(const std::filesystem::path& file);

} // namespace norvane::cli
