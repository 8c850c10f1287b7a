#include "src/model/RecipientKinds.h"

#include <norvane/platform/Platform.h>

#include <algorithm>

namespace norvane {
namespace {

template <class T, field::List<T> NVMRecipients::*LIST>
constexpr RecipientKind listed(NVMRecipientType type, std::string_view textKey) {
    return {type, textKey,
            [](const NVMRecipients& recipients) -> std::optional<RecipientList> {
                const auto& list = recipients.*LIST;
                if (!list) return std::nullopt;
                return RecipientList(list->begin(), list->end());
            },
            [](NVMRecipients& recipients, const std::shared_ptr<NVMRecipient>& recipient) {
                if (&recipient->recordType() != &T::type()) return false;
                auto& list = recipients.*LIST;
                if (!list) list.emplace();
                list->push_back(std::static_pointer_cast<T>(recipient));
                return true;
            },
            [](NVMRecipients& recipients, const NVMRecipient& recipient) {
                if (auto& list = recipients.*LIST)
                    std::erase_if(*list, [&](const auto& item) { return item.get() == &recipient; });
            }};
}

constexpr RecipientKind kKinds[] = {
    listed<NVMAgent, &NVMRecipients::agents>(NVMRecipientTypeAgent, "Signing.AddressRecipients"),
    listed<NVMCarbonCopy, &NVMRecipients::carbonCopies>(NVMRecipientTypeCarbonCopy, "Signing.CC"),
    listed<NVMCertifiedDelivery, &NVMRecipients::certifiedDeliveries>(NVMRecipientTypeCertifiedDelivery,
                                                                      "Signing.AcknowledgeReceipt"),
    listed<NVMEditor, &NVMRecipients::editors>(NVMRecipientTypeEditor, "Signing.ManageEnvelope"),
    listed<NVMInPersonSigner, &NVMRecipients::inPersonSigners>(NVMRecipientTypeInPersonSigner,
                                                               "Signing.InPerson"),
    listed<NVMIntermediary, &NVMRecipients::intermediaries>(NVMRecipientTypeIntermediary,
                                                            "Signing.ManageRecipients"),
    listed<NVMSigner, &NVMRecipients::signers>(NVMRecipientTypeSigner, "BuildEnvelope.Remote"),
};

} // namespace

std::span<const RecipientKind> recipientKinds() { return kKinds; }

const RecipientKind* recipientKindOf(NVMRecipientType type) {
    const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&](const RecipientKind& row) { return row.type == type; });
    return kind == std::end(kKinds) ? nullptr : kind;
}

std::optional<std::string> localizedTextForRecipientType(NVMRecipientType type) {
    const StringTable& strings = *Platform::current().strings;
    if (type == NVMRecipientTypeNotSet) return strings.text("Signing.NotSet");
    const RecipientKind* kind = recipientKindOf(type);
    if (!kind) return std::nullopt;
    return strings.text(kind->textKey);
}

} // namespace norvane
