#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVESUserInfo;

/// A user of the service: the sender of an envelope, a member of a signing group. Copying is field by field.
// A field list is a table, so its form is its own.
// clang-format off
#define NVM_USER_INFO_FIELDS(FIELD, R)                                                                       \
    FIELD(R, Text, userName)                                                                                 \
    FIELD(R, Text, email)                                                                                    \
    FIELD(R, Text, userId) FIELD(R, Text, userType) FIELD(R, Text, userStatus) FIELD(R, Text, uri)
// clang-format on
struct NVMUserInfo {
    NORVANE_RECORD(NVMUserInfo, NVM_USER_INFO_FIELDS)

    NVMUserInfo() = default;
    explicit NVMUserInfo(const NVESUserInfo& userInfo);
};

} // namespace norvane
