#pragma once

#include <norvane/model/NVMEnvelopeHelperProtocol.h>

#include <memory>

namespace norvane {

struct NVMEnvelopeTemplate;

/// The queries of a stored envelope or template, so that signing can work on either form. They are put to the
/// domain record that is read from the stored one anew each time, without the bytes of its documents: what is
/// handed out belongs to the caller, and changing it changes nothing stored.
class StoredEnvelopeQueries : public NVMEnvelopeHelperProtocol {
  public:
    bool isAvailableRemotely() const override { return !isLocallyOriginatedEnvelope(); }
    bool isSelfSign() const override;
    DocumentList allDocuments() const override;
    std::optional<RecipientList> recipientsOfType(NVMRecipientType type) const override;
    RecipientList allSigners() const override;
    std::shared_ptr<NVMRecipient> recipientWithId(const std::optional<std::string>& id) const override;
    std::optional<TabList> tagsForSigner(const std::shared_ptr<NVMRecipient>& signer) const override;
    std::optional<RadioGroupList>
    radioGroupsForSigner(const std::shared_ptr<NVMRecipient>& signer) const override;
    TabList allTags() const override;
    TabList tagsForDocument(const NVMDocument& document) const override;
    std::shared_ptr<NVMRadioGroup>
    radioGroupWith(const NVMRadio& radio, const std::shared_ptr<NVMRecipient>& forRecipient) const override;
    RecipientList localSignersWithOnlyIncomplete(bool onlyIncomplete) const override;
    RecipientList incompleteLocalSigners() const override { return localSignersWithOnlyIncomplete(true); }
    RecipientList allOfflineRecipientsInCurrentRoutingOrder() const override;
    std::shared_ptr<NVMRecipients> signedRecipients() const override;
    std::shared_ptr<NVMRecipients> unsignedRecipients() const override;

  private:
    /// What is asked: answers for itself where the stored record does.
    virtual std::unique_ptr<NVMEnvelopeTemplate> domainRecord() const = 0;
};

} // namespace norvane
