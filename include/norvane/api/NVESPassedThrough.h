#pragma once

#include <norvane/api/NVESObject.h>

// Records whose keys the kit has no need of: each keeps the members that it came with and writes them back.
namespace norvane {

#define NVES_PASSED_THROUGH_RECORD(R)                                                                        \
    struct R : NVESObject {                                                                                  \
        NORVANE_RECORD(R, NVES_PASSED_THROUGH_FIELDS)                                                        \
    };
// Calls its argument once a record.
#define NVES_PASSED_THROUGH_RECORDS(RECORD)                                                                  \
    RECORD(NVESAccountSharedAccess)                                                                          \
    RECORD(NVESAddressInformation)                                                                           \
    RECORD(NVESAddressInformationInput)                                                                      \
    RECORD(NVESApiRequestLog)                                                                                \
    RECORD(NVESApiRequestLogsResult)                                                                         \
    RECORD(NVESBulkEnvelope)                                                                                 \
    RECORD(NVESConsoleViewRequest)                                                                           \
    RECORD(NVESCorrectViewRequest)                                                                           \
    RECORD(NVESCustomFieldV2)                                                                                \
    RECORD(NVESCustomFieldsEnvelope)                                                                         \
    RECORD(NVESDiagnosticsSettingsInformation)                                                               \
    RECORD(NVESDobInformationInput)                                                                          \
    RECORD(NVESDocumentFieldsInformation)                                                                    \
    RECORD(NVESDocumentTemplate)                                                                             \
    RECORD(NVESDocumentTemplateList)                                                                         \
    RECORD(NVESEnvelopeAuditEvent)                                                                           \
    RECORD(NVESEnvelopeAuditEventResponse)                                                                   \
    RECORD(NVESEnvelopeDocument)                                                                             \
    RECORD(NVESEnvelopeDocumentsResult)                                                                      \
    RECORD(NVESEnvelopeEvent)                                                                                \
    RECORD(NVESEnvelopeIdsRequest)                                                                           \
    RECORD(NVESEventResult)                                                                                  \
    RECORD(NVESFileType)                                                                                     \
    RECORD(NVESFileTypeList)                                                                                 \
    RECORD(NVESFilter)                                                                                       \
    RECORD(NVESFolderItem)                                                                                   \
    RECORD(NVESFolderItemResponse)                                                                           \
    RECORD(NVESFolderItemV2)                                                                                 \
    RECORD(NVESFolderItemsResponse)                                                                          \
    RECORD(NVESFoldersRequest)                                                                               \
    RECORD(NVESGroup)                                                                                        \
    RECORD(NVESGroupInformation)                                                                             \
    RECORD(NVESInlineTemplate)                                                                               \
    RECORD(NVESLockRequest)                                                                                  \
    RECORD(NVESMemberSharedItems)                                                                            \
    RECORD(NVESPageRequest)                                                                                  \
    RECORD(NVESRecipientEvent)                                                                               \
    RECORD(NVESResourceInformation)                                                                          \
    RECORD(NVESSamlAssertionAttribute)                                                                       \
    RECORD(NVESSenderEmailNotifications)                                                                     \
    RECORD(NVESServerTemplate)                                                                               \
    RECORD(NVESServiceInformation)                                                                           \
    RECORD(NVESServiceVersion)                                                                               \
    RECORD(NVESSharedItem)                                                                                   \
    RECORD(NVESSignResponse)                                                                                 \
    RECORD(NVESSignerEmailNotifications)                                                                     \
    RECORD(NVESSsn4InformationInput)                                                                         \
    RECORD(NVESSsn9InformationInput)                                                                         \
    RECORD(NVESTabMetadata)                                                                                  \
    RECORD(NVESTabMetadataList)                                                                              \
    RECORD(NVESTemplateCustomFields)                                                                         \
    RECORD(NVESTemplateDocumentsResult)                                                                      \
    RECORD(NVESTemplateInformation)                                                                          \
    RECORD(NVESTemplateMatch)                                                                                \
    RECORD(NVESTemplateNotificationRequest)                                                                  \
    RECORD(NVESTemplateRecipients)                                                                           \
    RECORD(NVESTemplateSummary)                                                                              \
    RECORD(NVESTemplateTabs)                                                                                 \
    RECORD(NVESTemplateUpdateSummary)                                                                        \
    RECORD(NVESViewLinkRequest)

NVES_PASSED_THROUGH_RECORDS(NVES_PASSED_THROUGH_RECORD)
#undef NVES_PASSED_THROUGH_RECORD

} // namespace norvane
