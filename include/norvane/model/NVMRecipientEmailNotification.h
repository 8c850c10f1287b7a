#pragma once

#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDRecipientEmailNotification;

/// The mail that a recipient gets.
// clang-format off
#define NVM_RECIPIENT_EMAIL_NOTIFICATION_FIELDS(FIELD, R) \
    FIELD(R, Text, emailSubject) FIELD(R, Text, emailBody) FIELD(R, Text, supportedLanguage)
// clang-format on
struct NVMRecipientEmailNotification {
    NORVANE_RECORD(NVMRecipientEmailNotification, NVM_RECIPIENT_EMAIL_NOTIFICATION_FIELDS)

    NVMRecipientEmailNotification() = default;
    explicit NVMRecipientEmailNotification(const NVMCDRecipientEmailNotification& stored);
};

} // namespace norvane
