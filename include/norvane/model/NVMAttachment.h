#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDAttachment;

/// An attachment that a recipient is to supply.
// clang-format off
#define NVM_ATTACHMENT_FIELDS(FIELD, R) FIELD(R, Text, label) FIELD(R, Text, attachmentType)
// clang-format on
struct NVMAttachment {
    NORVANE_RECORD(NVMAttachment, NVM_ATTACHMENT_FIELDS)

    NVMAttachment() = default;
    explicit NVMAttachment(const NVMCDAttachment& stored);
};

} // namespace norvane
