#pragma once

#include <norvane/model/NVMRecipients.h>

#include <span>
#include <string_view>

namespace norvane {

/// One row a kind of recipient: what the kind is called, and its list in NVMRecipients.
struct RecipientKind {
    NVMRecipientType type;
    std::string_view textKey;
    std::optional<RecipientList> (*list)(const NVMRecipients& recipients);
    bool (*add)(NVMRecipients& recipients, const std::shared_ptr<NVMRecipient>& recipient);
    void (*remove)(NVMRecipients& recipients, const NVMRecipient& recipient);
};

/// In the order of NVMRecipients::allRecipients.
std::span<const RecipientKind> recipientKinds();
/// Null for numbers that name no kind, 0 among them.
const RecipientKind* recipientKindOf(NVMRecipientType type);

} // namespace norvane
