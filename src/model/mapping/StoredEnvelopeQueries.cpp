#include "src/model/mapping/StoreToDomain.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>

namespace norvane {
namespace {

/// The domain form of a stored record, with that record's own word on where the envelope comes from.
template <class Domain, class Stored>
class View : public Domain {
  public:
    explicit View(const Stored& stored)
        : stored_(stored) {
        storeToDomain().apply(stored, static_cast<Domain&>(*this));
    }

    bool isLocallyOriginatedEnvelope() const override { return stored_.isLocallyOriginatedEnvelope(); }
    bool isAvailableRemotely() const override { return stored_.isAvailableRemotely(); }
    bool isCreatedFromTemplate() const override { return stored_.isCreatedFromTemplate(); }

  private:
    const Stored& stored_;
};

} // namespace

std::unique_ptr<NVMEnvelopeTemplate> NVMCDEnvelopeDefinition::domainRecord() const {
    return std::make_unique<View<NVMEnvelopeDefinition, NVMCDEnvelopeDefinition>>(*this);
}

std::unique_ptr<NVMEnvelopeTemplate> NVMCDEnvelopeTemplate::domainRecord() const {
    return std::make_unique<View<NVMEnvelopeTemplate, NVMCDEnvelopeTemplate>>(*this);
}

void NVMCDEnvelopeDefinition::setSubjectIfNeeded() {
    const auto record = domainRecord();
    record->setSubjectIfNeeded();
    emailSubject = record->emailSubject;
}

void NVMCDEnvelopeTemplate::setSubjectIfNeeded() {
    const auto record = domainRecord();
    record->setSubjectIfNeeded();
    emailSubject = record->emailSubject;
}

bool NVMCDEnvelopeTemplate::isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession() const {
    return domainRecord()->isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession();
}

bool StoredEnvelopeQueries::isSelfSign() const { return domainRecord()->isSelfSign(); }

DocumentList StoredEnvelopeQueries::allDocuments() const { return domainRecord()->allDocuments(); }

std::optional<RecipientList> StoredEnvelopeQueries::recipientsOfType(NVMRecipientType type) const {
    return domainRecord()->recipientsOfType(type);
}

RecipientList StoredEnvelopeQueries::allSigners() const { return domainRecord()->allSigners(); }

std::shared_ptr<NVMRecipient>
StoredEnvelopeQueries::recipientWithId(const std::optional<std::string>& id) const {
    return domainRecord()->recipientWithId(id);
}

std::optional<TabList>
StoredEnvelopeQueries::tagsForSigner(const std::shared_ptr<NVMRecipient>& signer) const {
    return domainRecord()->tagsForSigner(signer);
}

std::optional<RadioGroupList>
StoredEnvelopeQueries::radioGroupsForSigner(const std::shared_ptr<NVMRecipient>& signer) const {
    return domainRecord()->radioGroupsForSigner(signer);
}

TabList StoredEnvelopeQueries::allTags() const { return domainRecord()->allTags(); }

TabList StoredEnvelopeQueries::tagsForDocument(const NVMDocument& document) const {
    return domainRecord()->tagsForDocument(document);
}

std::shared_ptr<NVMRadioGroup>
StoredEnvelopeQueries::radioGroupWith(const NVMRadio& radio,
                                      const std::shared_ptr<NVMRecipient>& forRecipient) const {
    return domainRecord()->radioGroupWith(radio, forRecipient);
}

RecipientList StoredEnvelopeQueries::localSignersWithOnlyIncomplete(bool onlyIncomplete) const {
    return domainRecord()->localSignersWithOnlyIncomplete(onlyIncomplete);
}

RecipientList StoredEnvelopeQueries::allOfflineRecipientsInCurrentRoutingOrder() const {
    return domainRecord()->allOfflineRecipientsInCurrentRoutingOrder();
}

std::shared_ptr<NVMRecipients> StoredEnvelopeQueries::signedRecipients() const {
    return domainRecord()->signedRecipients();
}

std::shared_ptr<NVMRecipients> StoredEnvelopeQueries::unsignedRecipients() const {
    return domainRecord()->unsignedRecipients();
}

} // namespace norvane
