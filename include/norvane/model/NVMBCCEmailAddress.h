#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDBCCEmailAddress;

/// An address that gets a blind copy.
// clang-format off
#define NVM_BCC_EMAIL_ADDRESS_FIELDS(FIELD, R) FIELD(R, Text, bccEmailAddressId) FIELD(R, Text, email)
// clang-format on
struct NVMBCCEmailAddress {
    NORVANE_RECORD(NVMBCCEmailAddress, NVM_BCC_EMAIL_ADDRESS_FIELDS)

    NVMBCCEmailAddress() = default;
    explicit NVMBCCEmailAddress(const NVMCDBCCEmailAddress& stored);
};

} // namespace norvane
