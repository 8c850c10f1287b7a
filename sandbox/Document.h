#pragma once

#include <string>

namespace norvane::sandbox {

/// A document of an envelope or of a template.
struct Document {
    std::string id;
    std::string name; ///< with its extension
    std::string pdf;
};

} // namespace norvane::sandbox
