#pragma once

#include <norvane/model/NVMTabType.h>

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

/// What an annotation needs to know of the tab that it shows.
struct AnnotatedTab {
    std::string tabId;
    NVMTagType type = NVMTabTypeUnsupported;
    std::string recipientId;
    std::int64_t pageNumber = 0;
    // The frame: whole points from the page's top-left corner, y downwards.
    std::int64_t originX = 0;
    std::int64_t originY = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool required = false;
    bool locked = false;
    bool selected = false;
    std::optional<std::string> value;
};

} // namespace norvane
