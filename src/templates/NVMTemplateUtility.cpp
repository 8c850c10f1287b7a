#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/model/NVMTemplateRecipient.h>
#include <norvane/templates/NVMTemplateUtility.h>

namespace norvane {
namespace {

NVMTemplateUtility::RecipientRecords templateRecipients(const NVMRecipients* recipients) {
    NVMTemplateUtility::RecipientRecords records;
    if (!recipients) return records;
    for (const auto& recipient : recipients->allRecipients()) {
        records.push_back(std::make_shared<NVMTemplateRecipient>(*recipient));
    }
    return records;
}

} // namespace

NVMTemplateUtility::RecipientRecords
NVMTemplateUtility::templateRecipientsFromNVMEnvelopeTemplate(const NVMEnvelopeTemplate& envelopeTemplate) {
    return templateRecipients(envelopeTemplate.recipients.get());
}

NVMTemplateUtility::RecipientRecords
NVMTemplateUtility::templateRecipientsFromNVESEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    if (!envelopeTemplate.recipients) return {};
    const NVMRecipients recipients(*envelopeTemplate.recipients);
    return templateRecipients(&recipients);
}

std::vector<std::shared_ptr<NVESTemplateRole>>
NVMTemplateUtility::templateRolesFromNVMTemplateRecipients(const RecipientRecords& recipients) {
    std::vector<std::shared_ptr<NVESTemplateRole>> roles;
    for (const auto& recipient : recipients) {
        auto role = std::make_shared<NVESTemplateRole>();
        role->roleName = recipient->roleName;
        role->name = recipient->recipientName;
        role->email = recipient->recipientEmail;
        if (recipient->recipientType == NVMRecipientTypeInPersonSigner) {
            role->inPersonSignerName = recipient->inPersonSignerName;
        }
        role->routingOrder = Value(recipient->routingOrder).stringValue();
        roles.push_back(std::move(role));
    }
    return roles;
}

NVMRecipientType NVMTemplateUtility::recipientTypeForNVESObject(const RecordType& wireRecipient) {
    const std::pair<const RecordType&, NVMRecipientType> kinds[] = {
        {NVESAgent::type(), NVMRecipientTypeAgent},
        {NVESCarbonCopy::type(), NVMRecipientTypeCarbonCopy},
        {NVESCertifiedDelivery::type(), NVMRecipientTypeCertifiedDelivery},
        {NVESEditor::type(), NVMRecipientTypeEditor},
        {NVESIntermediary::type(), NVMRecipientTypeIntermediary},
        {NVESInPersonSigner::type(), NVMRecipientTypeInPersonSigner},
        {NVESSigner::type(), NVMRecipientTypeSigner},
    };
    for (const auto& [type, kind] : kinds) {
        if (&type == &wireRecipient) return kind;
    }
    return NVMRecipientTypeNotSet;
}

std::shared_ptr<NVESEnvelopeDefinition>
NVMTemplateUtility::createEnvelopeRequestForTemplateId(const std::string& templateId,
                                                       const RecipientRecords& recipientModel) {
    auto request = std::make_shared<NVESEnvelopeDefinition>();
    request->templateId = templateId;
    request->templateRoles = templateRolesFromNVMTemplateRecipients(recipientModel);
    return request;
}

} // namespace norvane
