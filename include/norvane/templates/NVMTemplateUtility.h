#pragma once

#include <norvane/model/NVMRecipientType.h>
#include <norvane/record/Record.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

struct NVESEnvelopeDefinition;
struct NVESEnvelopeTemplate;
struct NVESTemplateRole;
struct NVMEnvelopeTemplate;
struct NVMTemplateRecipient;

/// Turns the roles of a template into editable recipients and back. No instances; any thread may call.
class NVMTemplateUtility {
  public:
    using RecipientRecords = std::vector<std::shared_ptr<NVMTemplateRecipient>>;

    NVMTemplateUtility() = delete;

    /// In the order agents, carbon copies, certified deliveries, editors, in-person signers, intermediaries,
    /// signers.
    static RecipientRecords
    templateRecipientsFromNVMEnvelopeTemplate(const NVMEnvelopeTemplate& envelopeTemplate);
    static RecipientRecords
    templateRecipientsFromNVESEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate);
    static std::vector<std::shared_ptr<NVESTemplateRole>>
    templateRolesFromNVMTemplateRecipients(const RecipientRecords& recipients);
    /// The kind of a wire recipient, given its table; NVMRecipientTypeNotSet for other records.
    static NVMRecipientType recipientTypeForNVESObject(const RecordType& wireRecipient);
    /// What asks the service for an envelope from a template: its id, and a role for each recipient.
    static std::shared_ptr<NVESEnvelopeDefinition>
    createEnvelopeRequestForTemplateId(const std::string& templateId, const RecipientRecords& recipientModel);
};

} // namespace norvane
