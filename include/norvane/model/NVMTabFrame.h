#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDFrame;

/// Where a tab lies: whole points (1/72 inch) from the page's top-left corner, y growing downwards.
// clang-format off
#define NVM_TAB_FRAME_FIELDS(FIELD, R) \
    FIELD(R, Integer, originX) FIELD(R, Integer, originY) FIELD(R, Integer, width) \
    FIELD(R, Integer, height)
// clang-format on
struct NVMTabFrame {
    NORVANE_RECORD(NVMTabFrame, NVM_TAB_FRAME_FIELDS)

    NVMTabFrame() = default;
    explicit NVMTabFrame(const NVMCDFrame& stored);
    NVMTabFrame(std::int64_t x, std::int64_t y, std::int64_t frameWidth, std::int64_t frameHeight)
        : originX(x)
        , originY(y)
        , width(frameWidth)
        , height(frameHeight) {}
};

} // namespace norvane
