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
/// The document with the page of that number, from 1 on, turned by a multiple of 90 degrees, or without it.
std::string withPageTurned(std::string_view pdf, std::size_t number, int degrees);
std::string withoutPage(std::string_view pdf, std::size_t number);

} // namespace norvane::sandbox
