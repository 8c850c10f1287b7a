#include "src/store/Schema.h"

#include <sstream>

namespace norvane {

namespace {

/// Attributes as "name:kind" and references as "column:owner", separated by blanks. Kinds: S text, N number,
/// D date, X bytes, B a plain flag.
struct EntityOfVersion1 {
    const char* name;
    const char* attributes;
    const char* references;
};

// clang-format off
constexpr EntityOfVersion1 kEntities[] = {
    {"NVMCDFrame",
     "height:N originX:N originY:N width:N",
     "tab:NVMCDTab"},
    {"NVMCDMergeField",
     "configurationType:S path:S writeBack:B allowSenderToEdit:B row:N",
     "tab:NVMCDTab"},
    {"NVMCDErrorDetails",
     "message:S errorCode:S",
     "tab:NVMCDTab _lockInformation:NVMCDLockInformation"},
    {"NVMCDTabImageData",
     "data:X",
     "tag:NVMCDTab signatureAsInitials:NVMCDSignature signatureAsSignature:NVMCDSignature"},
    {"NVMCDTab",
     "documentId:S tabLabel:S pageNumber:N recipientId:S required:N selected:N tabId:S type:N "
     "value:S templateLocked:N templateRequired:N tabOrder:N name:S customTabId:S font:S bold:N "
     "italic:N underline:N fontSize:S fontColor:S locked:N concealValueOnDocument:N "
     "disableAutoSize:N maxLength:N originalValue:S scaleValue:S optional:N isPaymentAmount:N "
     "formula:S validationPattern:S validationMessage:S shared:N requireInitialOnSharedChange:N "
     "senderRequired:N requireAll:N anchorString:S anchorXOffset:S anchorYOffset:S anchorUnits:S "
     "anchorIgnoreIfNotPresent:N anchorCaseSensitive:N anchorMatchWholeWord:N "
     "anchorHorizontalAlignment:N conditionalParentLabel:S conditionalParentValue:S status:S "
     "roundDecimalPlaces:N",
     "radio:NVMCDRadioGroup checkboxTab:NVMCDTabs companyTab:NVMCDTabs dateSignedTab:NVMCDTabs "
     "fullNameTab:NVMCDTabs initialHereTab:NVMCDTabs signHereTab:NVMCDTabs textTab:NVMCDTabs "
     "titleTab:NVMCDTabs formulaTab:NVMCDTabs"},
    {"NVMCDRadioGroup",
     "conditionalParentLabel:S conditionalParentValue:S documentId:S groupName:S recipientId:S "
     "requireAll:N requireInitialOnSharedChange:N shared:N",
     "radioGrouptab:NVMCDTabs"},
    {"NVMCDTabs",
     "",
     "recipient:NVMCDRecipient _templateRole:NVMCDTemplateRole"},
    {"NVMCDUserInfo",
     "email:S uri:S userId:S userName:S userStatus:S userType:S",
     "recipient:NVMCDRecipient _lockInformation:NVMCDLockInformation "
     "lastModified:NVMCDEnvelopeTemplateDefinition owner:NVMCDEnvelopeTemplateDefinition"},
    {"NVMCDAttachment",
     "label:S attachmentType:S",
     "attachments:NVMCDRecipient envelopeDefinition:NVMCDEnvelopeDefinition"},
    {"NVMCDRecipientEmailNotification",
     "emailSubject:S emailBody:S supportedLanguage:S",
     "recipient:NVMCDRecipient _templateRole:NVMCDTemplateRole"},
    {"NVMCDRecipientSignatureInformation",
     "signatureName:S signatureInitials:S fontStyle:S",
     "recipientSigninfo:NVMCDRecipient"},
    {"NVMCDOfflineAttributes",
     "accountEsignId:S deviceModel:S deviceName:S gpsLatitude:N gpsLongitude:N "
     "offlineSigningHash:S _consumerDisclosureId:S",
     "recipient:NVMCDRecipient"},
    {"NVMCDSignature",
     "",
     "recipient:NVMCDRecipient"},
    {"NVMCDRecipient",
     "accessCode:S addAccessCodeToEmail:S authenticationFailedDateTime:D canSignOffline:N "
     "isBulkRecipient:N requireSignOnPaper:N templateLocked:N templateRequired:N totalTabCount:N "
     "clientUserId:S declinedDateTime:D declinedReason:S bulkRecipientsUri:S "
     "emailRecipientPostSigningURL:S embeddedRecipientStartURL:S deliveryMethod:S faxNumber:S "
     "idCheckConfigurationName:S defaultRecipient:N deliveredDateTime:D email:S hostEmail:S "
     "hostName:S inheritEmailNotificationConfiguration:N name:S note:S recipientId:S "
     "recipientIdGuid:S recipientSuppliesTabs:S requireIdLookup:N requireSignerCertificate:S "
     "roleName:S routingOrder:N sentDateTime:D signedDateTime:D signerName:S signerEmail:S "
     "signInEachLocation:N signingGroupId:S signingGroupName:S status:S statusCode:S userId:S "
     "inPersonSigningType:S recipientType:N excludedDocuments:S customFields:S",
     "agent:NVMCDRecipients carbonCopy:NVMCDRecipients certifiedDelivery:NVMCDRecipients "
     "editor:NVMCDRecipients inPersonSigner:NVMCDRecipients intermediary:NVMCDRecipients "
     "signer:NVMCDRecipients envelopeDefinition:NVMCDEnvelopeDefinition"},
    {"NVMCDRecipients",
     "currentRoutingOrder:N recipientCount:N templateId:S",
     "_envelopeDefinition:NVMCDEnvelopeDefinition template:NVMCDEnvelopeTemplate"},
    {"NVMCDNameValue",
     "name:S value:S",
     "document:NVMCDDocument"},
    {"NVMCDDocument",
     "applyAnchorTabs:S documentBase64:S documentId:S encryptedWithKeyManager:N fileExtension:S "
     "filePath:S name:S order:S pages:S password:S remoteUrl:S sandboxFilePath:S "
     "transformPdfFields:N uri:S display:S signerMustAcknowledge:S includeInDownload:N _sha256:S",
     "envelopeDefinition:NVMCDEnvelopeDefinition _combinedTemplate:NVMCDEnvelopeTemplate "
     "template:NVMCDEnvelopeTemplate"},
    {"NVMCDTextCustomField",
     "fieldId:S name:S show:N required:N value:S configurationType:S",
     "customFields:NVMCDCustomFields"},
    {"NVMCDListCustomField",
     "fieldId:S name:S show:N required:N value:S configurationType:S listItems:S",
     "customFields:NVMCDCustomFields"},
    {"NVMCDCustomFields",
     "",
     "envelopeDefinition:NVMCDEnvelopeDefinition envelopeTemplate:NVMCDEnvelopeTemplate"},
    {"NVMCDBCCEmailAddress",
     "bccEmailAddressId:S email:S",
     "emailSettigs:NVMCDEmailSettings"},
    {"NVMCDEmailSettings",
     "replyEmailAddressOverride:S replyEmailNameOverride:S",
     "envelopeDefinition:NVMCDEnvelopeDefinition envelopeTemplate:NVMCDEnvelopeTemplate"},
    {"NVMCDReminders",
     "useAccountDefaults:N reminderEnabled:N reminderDelay:N reminderFrequency:N",
     "templateReminders:NVMCDNotification"},
    {"NVMCDExpirations",
     "useAccountDefaults:N expireEnabled:N expireAfter:N expireWarn:N",
     "templateExpirations:NVMCDNotification"},
    {"NVMCDNotification",
     "useAccountDefaults:N",
     "envelopeDefinition:NVMCDEnvelopeDefinition notification:NVMCDEnvelopeTemplate"},
    {"NVMCDEnvelopeEvent",
     "envelopeEventStatusCode:S includeDocuments:N",
     "envelopeNotification:NVMCDEventNotification"},
    {"NVMCDRecipientEvent",
     "recipientEventStatusCode:S includeDocuments:N",
     "eventNotification:NVMCDEventNotification"},
    {"NVMCDEventNotification",
     "url:S loggingEnabled:N requireAcknowledgment:N useSoapInterface:N soapNameSpace:S "
     "includeCertificateWithSoap:N signMessageWithX509Cert:N includeDocuments:N "
     "includeEnvelopeVoidReason:N includeTimeZone:N includeSenderAccountAsCustomField:N "
     "includeDocumentFields:N includeCertificateOfCompletion:N",
     "envelopeDefinition:NVMCDEnvelopeDefinition"},
    {"NVMCDLockInformation",
     "lockedByApp:S lockedUntilDateTime:D lockDurationInSeconds:N lockType:S useScratchPad:N "
     "lockToken:S",
     "envelopeDefinition:NVMCDEnvelopeDefinition"},
    {"NVMCDTemplateRole",
     "email:S roleName:S name:S signingGroupId:N inPersonSignerName:S clientUserId:S "
     "embeddedRecipientStartURL:S defaultRecipient:S accessCode:S routingOrder:N",
     "envelopeDefinition:NVMCDEnvelopeDefinition"},
    {"NVMCDEnvelopeDefinition",
     "accessibility:S allowMarkup:N allowReassign:N allowRecipientRecursion:N asynchronous:N "
     "attachmentsUri:S authoritativeCopy:N brandId:S brandLock:N certificateUri:S "
     "completedDateTime:D createdDateTime:D customFieldsUri:S declinedDateTime:D deletedDateTime:D "
     "deliveredDateTime:D disableResponsiveDocument:N documentsCombinedUri:S documentsUri:S "
     "emailBlurb:S emailSubject:S enableWetSign:N enforceSignerVisibility:N envelopeId:S "
     "envelopeIdStamping:N envelopeUri:S initialSentDateTime:D is21CFRPart11:N "
     "lastModifiedDateTime:D messageLock:N notificationUri:S password:S purgeState:S "
     "recipientsLock:N recipientsUri:S sentDateTime:D signingLocation:S status:S "
     "statusChangedDateTime:D templateId:S templatesUri:S transactionId:S useDisclosure:N "
     "voidedDateTime:D voidedReason:S syncPending:N syncPendingUploadRetryCount:N "
     "syncFailureReason:S hasIncompleteLocalSigners:N isCreatedFromTemplate:N "
     "isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession:N",
     ""},
    {"NVMCDEnvelopeTemplateDefinition",
     "folderId:S folderName:S folderUri:S lastModified:D name:S pageCount:N parentFolderUri:S "
     "password:S shared:N templateDescription:S templateId:S uri:S varNewPassword:S",
     "envelopeTemplate:NVMCDEnvelopeTemplate"},
    {"NVMCDEnvelopeTemplate",
     "allowMarkup:N allowReassign:N asynchronous:N authoritativeCopy:N certificateUri:S "
     "completedDateTime:D createdDateTime:D customFieldsUri:S declinedDateTime:D deletedDateTime:D "
     "deliveredDateTime:D documentsCombinedUri:S documentsUri:S emailBlurb:S emailSubject:S "
     "enableWetSign:N enforceSignerVisibility:N envelopeId:S envelopeIdStamping:N envelopeUri:S "
     "is21CFRPart11:N lastModifiedDateTime:D messageLock:N notificationUri:S purgeState:S "
     "recipientsLock:N recipientsUri:S sentDateTime:D signingLocation:S status:S "
     "statusChangedDateTime:D templateId:S templatesUri:S transactionId:S useDisclosure:S "
     "voidedDateTime:D cachedDateTime:D voidedReason:S autoNavigation:N "
     "isSignatureProviderEnvelope:N brandId:S brandLock:N",
     ""},
    {"NVMCDCacheMetaData",
     "uri:S recordType:S lastTimeCached:D",
     ""},
};
// clang-format on

std::string typeOf(char kind) {
    switch (kind) {
    case 'N':
        return "NUMERIC";
    case 'D':
        return "INTEGER";
    case 'X':
        return "BLOB";
    case 'B':
        return "INTEGER NOT NULL DEFAULT 0";
    default:
        return "TEXT";
    }
}

/// Calls with what stands before and after the colon of each word.
template <class Take>
void eachPair(const char* text, Take take) {
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const auto colon = word.find(':');
        take(word.substr(0, colon), word.substr(colon + 1));
    }
}

} // namespace

Schema schemaOfVersion1() {
    Schema schema{1, {}, {}};
    for (const auto& entity : kEntities) {
        Schema::Table& table = schema.tables.emplace_back();
        table.name = entity.name;
        eachPair(entity.attributes, [&](const std::string& name, const std::string& kind) {
            table.attributes.push_back({name, typeOf(kind.front())});
        });
        eachPair(entity.references, [&](const std::string& column, const std::string& owner) {
            table.references.push_back({column, owner});
        });
    }
    return schema;
}

} // namespace norvane
