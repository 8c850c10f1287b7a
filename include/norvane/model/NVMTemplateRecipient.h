#pragma once

#include <norvane/model/NVMRecipient.h>
#include <norvane/model/NVMTabs.h>
#include <norvane/record/Record.h>

#include <cstdint>
#include <memory>

namespace norvane {

// Bits of NVMTemplateRecipient::disabledProperties.
inline constexpr std::int64_t NVMTemplateRecipientNameDisabled = 1;
inline constexpr std::int64_t NVMTemplateRecipientEmailDisabled = 2;
inline constexpr std::int64_t NVMTemplateRecipientInPersonSignerNameDisabled = 4;

// clang-format off
#define NVM_TEMPLATE_RECIPIENT_FIELDS(FIELD, R) \
    FIELD(R, Integer, recipientType) FIELD(R, Integer, disabledProperties) FIELD(R, Text, ID) \
    FIELD(R, Text, roleName) FIELD(R, Text, recipientName) FIELD(R, Text, recipientEmail) \
    FIELD(R, Text, inPersonSignerName) FIELD(R, Text, inPersonSignerEmail) \
    FIELD(R, Number, routingOrder) FIELD(R, Bool, editDisabled) FIELD(R, Record<NVMTabs>, tabs)
// clang-format on

/// An editable view of one role of a template, used while the template is sent. For an in-person signer
/// `recipientName` and `recipientEmail` are the host's.
struct NVMTemplateRecipient {
    NORVANE_RECORD(NVMTemplateRecipient, NVM_TEMPLATE_RECIPIENT_FIELDS)

    NVMTemplateRecipient() = default;
    /// What the template fixes becomes a bit of `disabledProperties`; a sender's role without name and e-mail
    /// gets the signed-in user's. `tabs` stay absent.
    explicit NVMTemplateRecipient(const NVMRecipient& recipient);

    /// "sender", "self" or "me", also with "@" before it, ignoring case and diacritics.
    bool isSenderRole() const;
    bool isEditable() const;
    /// Name and e-mail are there, and an in-person signer's name.
    bool isCompleted() const;
};

} // namespace norvane
