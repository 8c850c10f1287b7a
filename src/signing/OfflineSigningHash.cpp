#include "src/signing/OfflineSigningHash.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMTabImageData.h>
#include <norvane/platform/Files.h>

#include <algorithm>

namespace norvane {

std::string offlineSigningHash(const NVMEnvelopeDefinition& envelope,
                               const std::shared_ptr<NVMRecipient>& recipient) {
    std::string message;
    if (envelope.combinedDocument && envelope.combinedDocument->pdf)
        message.append(envelope.combinedDocument->pdf->view());
    auto tabs = envelope.tagsForSigner(recipient).value_or(std::vector<std::shared_ptr<NVMTab>>{});
    std::sort(tabs.begin(), tabs.end(), [](const auto& a, const auto& b) { return a->tabId < b->tabId; });
    const auto append = [&message](std::string_view piece) { message.append(piece).push_back('\0'); };
    for (const auto& tab : tabs) {
        append(tab->tabId.value_or(""));
        append(tab->tabLabel.value_or(""));
        append(tab->value.value_or(""));
        const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(tab.get());
        const auto image = imageTab ? imageTab->imageData : nullptr;
        append(image && image->data ? image->data->view() : std::string_view());
    }
    return sha256Hex(message);
}

} // namespace norvane
