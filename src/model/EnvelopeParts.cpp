#include "src/model/IndependentCopy.h"

#include <norvane/model/NVMAttachment.h>
#include <norvane/model/NVMCustomFields.h>
#include <norvane/model/NVMDocument.h>
#include <norvane/model/NVMEmailSettings.h>
#include <norvane/model/NVMEnvelopeTemplateDefinition.h>
#include <norvane/model/NVMMergeField.h>
#include <norvane/model/NVMNotification.h>
#include <norvane/model/NVMOfflineAttributes.h>
#include <norvane/model/NVMRecipientEmailNotification.h>
#include <norvane/model/NVMRecipientSignatureInformation.h>
#include <norvane/model/NVMSignature.h>
#include <norvane/model/NVMTabFrame.h>

namespace norvane {

NORVANE_TABLE(NVMAttachment, NVM_ATTACHMENT_FIELDS)
NORVANE_TABLE(NVMBCCEmailAddress, NVM_BCC_EMAIL_ADDRESS_FIELDS)
NORVANE_TABLE(NVMCustomFields, NVM_CUSTOM_FIELDS_FIELDS)
NORVANE_TABLE(NVMDocument, NVM_DOCUMENT_FIELDS)
NORVANE_TABLE(NVMEmailSettings, NVM_EMAIL_SETTINGS_FIELDS)
NORVANE_TABLE(NVMEnvelopeTemplateDefinition, NVM_ENVELOPE_TEMPLATE_DEFINITION_FIELDS)
NORVANE_TABLE(NVMExpirations, NVM_EXPIRATIONS_FIELDS)
NORVANE_TABLE(NVMListCustomField, NVM_LIST_CUSTOM_FIELD_FIELDS)
NORVANE_TABLE(NVMMergeField, NVM_MERGE_FIELD_FIELDS)
NORVANE_TABLE(NVMNameValue, NVM_NAME_VALUE_FIELDS)
NORVANE_TABLE(NVMNotification, NVM_NOTIFICATION_FIELDS)
NORVANE_TABLE(NVMOfflineAttributes, NVM_OFFLINE_ATTRIBUTES_FIELDS)
NORVANE_TABLE(NVMRecipientEmailNotification, NVM_RECIPIENT_EMAIL_NOTIFICATION_FIELDS)
NORVANE_TABLE(NVMRecipientSignatureInformation, NVM_RECIPIENT_SIGNATURE_INFORMATION_FIELDS)
NORVANE_TABLE(NVMReminders, NVM_REMINDERS_FIELDS)
NORVANE_TABLE(NVMSignature, NVM_SIGNATURE_FIELDS)
NORVANE_TABLE(NVMTabFrame, NVM_TAB_FRAME_FIELDS)
NORVANE_TABLE(NVMTabImageData, NVM_TAB_IMAGE_DATA_FIELDS)
NORVANE_TABLE(NVMTextCustomField, NVM_TEXT_CUSTOM_FIELD_FIELDS)

NVMDocument::NVMDocument(const NVMDocument& document, bool includePdf) {
    independentCopy().apply(document, *this);
    if (!includePdf) pdf.reset();
}

} // namespace norvane
