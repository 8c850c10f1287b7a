#pragma once

#include <filesystem>
#include <string>

namespace norvane {

inline constexpr const char* kCombinedDocumentId = "1";

/// What all documents joined into one are called: their names without extensions, joined by "_". Serves the
/// records of the domain and of the store.
template <class Documents>
std::string combinedDocumentName(const Documents& documents) {
    std::string joined;
    for (const auto& document : documents) {
        const std::string name = std::filesystem::path(document->name.value_or("")).stem().string();
        if (!joined.empty() && !name.empty()) joined += "_";
        joined += name;
    }
    return joined.empty() ? "combined_document" : joined;
}

} // namespace norvane
