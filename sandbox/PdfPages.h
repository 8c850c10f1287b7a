#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvane::sandbox {

struct PageSize {
    int width = 0; ///< in points, rounded
    int height = 0;
};

// The documents have been checked to open; these throw when one does not.

/// The media box of each page.
std::vector<PageSize> pageSizes(std::string_view pdf);
/// One document of the pages of all, in order.
std::string joinedPdf(const std::vector<std::string>& documents);

} // namespace norvane::sandbox
