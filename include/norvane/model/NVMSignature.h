#pragma once

#include <norvane/model/NVMTabImageData.h>
#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDSignature;

/// What a recipient drew on this device.
// clang-format off
#define NVM_SIGNATURE_FIELDS(FIELD, R) \
    FIELD(R, Record<NVMTabImageData>, signatureImage) FIELD(R, Record<NVMTabImageData>, initialsImage)
// clang-format on
struct NVMSignature {
    NORVANE_RECORD(NVMSignature, NVM_SIGNATURE_FIELDS)

    NVMSignature() = default;
    explicit NVMSignature(const NVMCDSignature& stored);
};

} // namespace norvane
