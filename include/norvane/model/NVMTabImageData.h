#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDTabImageData;

/// The bytes of an image file.
// clang-format off
#define NVM_TAB_IMAGE_DATA_FIELDS(FIELD, R) FIELD(R, Bytes, data)
// clang-format on
struct NVMTabImageData {
    NORVANE_RECORD(NVMTabImageData, NVM_TAB_IMAGE_DATA_FIELDS)

    NVMTabImageData() = default;
    explicit NVMTabImageData(const NVMCDTabImageData& stored);
    explicit NVMTabImageData(Data bytes)
        : data(std::move(bytes)) {}
};

} // namespace norvane
