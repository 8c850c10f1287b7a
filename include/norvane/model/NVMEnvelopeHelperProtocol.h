#pragma once

#include <norvane/model/NVMDocument.h>
#include <norvane/model/NVMRecipients.h>
#include <norvane/model/NVMTabs.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

using DocumentList = std::vector<std::shared_ptr<NVMDocument>>;
using RadioGroupList = std::vector<std::shared_ptr<NVMRadioGroup>>;

/// The questions that signing and synchronisation ask of an envelope. Lists hold no duplicates.
class NVMEnvelopeHelperProtocol {
  public:
    virtual ~NVMEnvelopeHelperProtocol() = default;

    /// The service has not given it an id yet.
    virtual bool isLocallyOriginatedEnvelope() const = 0;
    virtual bool isAvailableRemotely() const = 0;
    virtual bool isCreatedFromTemplate() const = 0;
    /// Exactly one signer, who is the signed-in user.
    virtual bool isSelfSign() const = 0;

    virtual DocumentList allDocuments() const = 0;
    /// Absent for numbers outside 1 to 7 and for a missing list.
    virtual std::optional<RecipientList> recipientsOfType(NVMRecipientType type) const = 0;
    /// Signers by routing order, then in-person signers by routing order. Equal orders stay as they stand; an
    /// absent order counts as 0.
    virtual RecipientList allSigners() const = 0;
    virtual std::shared_ptr<NVMRecipient> recipientWithId(const std::optional<std::string>& id) const = 0;

    /// All tabs of a signer or in-person signer; absent for other kinds and where there are no tabs.
    virtual std::optional<TabList> tagsForSigner(const std::shared_ptr<NVMRecipient>& signer) const = 0;
    virtual std::optional<RadioGroupList>
    radioGroupsForSigner(const std::shared_ptr<NVMRecipient>& signer) const = 0;
    /// The tabs of all signers, then of all in-person signers.
    virtual TabList allTags() const = 0;
    /// Those of them on that document; none when it has no id.
    virtual TabList tagsForDocument(const NVMDocument& document) const = 0;
    /// The group of the recipient that holds this very radio or a copy of it; an equal id in another radio
    /// does not count, deliberately.
    virtual std::shared_ptr<NVMRadioGroup>
    radioGroupWith(const NVMRadio& radio, const std::shared_ptr<NVMRecipient>& forRecipient) const = 0;

    /// Those who sign on this device: signers who are the signed-in user and in-person signers whom that user
    /// hosts, in-person signers first, when it is their turn. With the flag, only those who have not signed
    /// yet.
    virtual RecipientList localSignersWithOnlyIncomplete(bool onlyIncomplete) const = 0;
    virtual RecipientList incompleteLocalSigners() const = 0;
    virtual RecipientList allOfflineRecipientsInCurrentRoutingOrder() const = 0;
    /// Those who signed on this device in this session, up to the current routing order.
    virtual std::shared_ptr<NVMRecipients> signedRecipients() const = 0;
    /// Those of `allOfflineRecipientsInCurrentRoutingOrder` who have not.
    virtual std::shared_ptr<NVMRecipients> unsignedRecipients() const = 0;
    virtual bool isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const = 0;

    /// Gives an envelope of status "sent" that has no subject the name of its first document as such.
    virtual void setSubjectIfNeeded() = 0;
};

} // namespace norvane
