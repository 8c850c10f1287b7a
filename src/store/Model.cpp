#include "src/store/Model.h"

#include "src/store/Schema.h"

#include <norvane/platform/NVMException.h>
#include <norvane/store/NVMCDCacheMetaData.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace norvane {

namespace {

struct EntityRow {
    const RecordType& (*type)();
    NVMManagedObject& (*object)(void*);
};

template <class T>
constexpr EntityRow entity() {
    return {&T::type, [](void* record) -> NVMManagedObject& { return *static_cast<T*>(record); }};
}

struct OwnershipRow {
    const RecordType& (*owner)();
    const RecordType& (*owned)();
    std::string_view member;
    std::string_view inverse;
};

template <class Owner, class Owned>
constexpr OwnershipRow owns(std::string_view member, std::string_view inverse) {
    return {&Owner::type, &Owned::type, member, inverse};
}

constexpr EntityRow kEntities[] = {
    entity<NVMCDFrame>(),
    entity<NVMCDMergeField>(),
    entity<NVMCDErrorDetails>(),
    entity<NVMCDTabImageData>(),
    entity<NVMCDTab>(),
    entity<NVMCDRadioGroup>(),
    entity<NVMCDTabs>(),
    entity<NVMCDUserInfo>(),
    entity<NVMCDAttachment>(),
    entity<NVMCDRecipientEmailNotification>(),
    entity<NVMCDRecipientSignatureInformation>(),
    entity<NVMCDOfflineAttributes>(),
    entity<NVMCDSignature>(),
    entity<NVMCDRecipient>(),
    entity<NVMCDRecipients>(),
    entity<NVMCDNameValue>(),
    entity<NVMCDDocument>(),
    entity<NVMCDTextCustomField>(),
    entity<NVMCDListCustomField>(),
    entity<NVMCDCustomFields>(),
    entity<NVMCDBCCEmailAddress>(),
    entity<NVMCDEmailSettings>(),
    entity<NVMCDReminders>(),
    entity<NVMCDExpirations>(),
    entity<NVMCDNotification>(),
    entity<NVMCDEnvelopeEvent>(),
    entity<NVMCDRecipientEvent>(),
    entity<NVMCDEventNotification>(),
    entity<NVMCDLockInformation>(),
    entity<NVMCDTemplateRole>(),
    entity<NVMCDEnvelopeDefinition>(),
    entity<NVMCDEnvelopeTemplateDefinition>(),
    entity<NVMCDEnvelopeTemplate>(),
    entity<NVMCDCacheMetaData>(),
};

// Owner, owned, the owner's member, the column of the owned entity's table. Columns of the kit's own, which
// are not part of the published model, start with an underscore.
constexpr OwnershipRow kOwnerships[] = {
    owns<NVMCDTab, NVMCDFrame>("frameEntity", "tab"),
    owns<NVMCDTab, NVMCDMergeField>("mergeField", "tab"),
    owns<NVMCDTab, NVMCDErrorDetails>("errorDetails", "tab"),
    owns<NVMCDTab, NVMCDTabImageData>("imageData", "tag"),
    owns<NVMCDRadioGroup, NVMCDTab>("radios", "radio"),
    owns<NVMCDTabs, NVMCDTab>("checkboxTabs", "checkboxTab"),
    owns<NVMCDTabs, NVMCDTab>("companyTabs", "companyTab"),
    owns<NVMCDTabs, NVMCDTab>("dateSignedTabs", "dateSignedTab"),
    owns<NVMCDTabs, NVMCDTab>("fullNameTabs", "fullNameTab"),
    owns<NVMCDTabs, NVMCDTab>("initialHereTabs", "initialHereTab"),
    owns<NVMCDTabs, NVMCDTab>("signHereTabs", "signHereTab"),
    owns<NVMCDTabs, NVMCDTab>("textTabs", "textTab"),
    owns<NVMCDTabs, NVMCDTab>("titleTabs", "titleTab"),
    owns<NVMCDTabs, NVMCDRadioGroup>("radioGroupTabs", "radioGrouptab"),
    owns<NVMCDTabs, NVMCDTab>("formulaTabs", "formulaTab"),
    owns<NVMCDSignature, NVMCDTabImageData>("initialsImage", "signatureAsInitials"),
    owns<NVMCDSignature, NVMCDTabImageData>("signatureImage", "signatureAsSignature"),
    owns<NVMCDRecipient, NVMCDUserInfo>("signingGroupUsers", "recipient"),
    owns<NVMCDRecipient, NVMCDTabs>("tabs", "recipient"),
    owns<NVMCDRecipient, NVMCDRecipientSignatureInformation>("signatureInfo", "recipientSigninfo"),
    owns<NVMCDRecipient, NVMCDAttachment>("recipientAttachments", "attachments"),
    owns<NVMCDRecipient, NVMCDOfflineAttributes>("offlineAttributes", "recipient"),
    owns<NVMCDRecipient, NVMCDRecipientEmailNotification>("emailNotification", "recipient"),
    owns<NVMCDRecipient, NVMCDSignature>("_signature", "recipient"),
    owns<NVMCDRecipients, NVMCDRecipient>("agents", "agent"),
    owns<NVMCDRecipients, NVMCDRecipient>("carbonCopies", "carbonCopy"),
    owns<NVMCDRecipients, NVMCDRecipient>("certifiedDeliveries", "certifiedDelivery"),
    owns<NVMCDRecipients, NVMCDRecipient>("editors", "editor"),
    owns<NVMCDRecipients, NVMCDRecipient>("inPersonSigners", "inPersonSigner"),
    owns<NVMCDRecipients, NVMCDRecipient>("intermediaries", "intermediary"),
    owns<NVMCDRecipients, NVMCDRecipient>("signers", "signer"),
    owns<NVMCDDocument, NVMCDNameValue>("documentFields", "document"),
    owns<NVMCDCustomFields, NVMCDTextCustomField>("textCustomFields", "customFields"),
    owns<NVMCDCustomFields, NVMCDListCustomField>("listCustomFields", "customFields"),
    owns<NVMCDEmailSettings, NVMCDBCCEmailAddress>("bccEmailAddresses", "emailSettigs"),
    owns<NVMCDNotification, NVMCDReminders>("reminders", "templateReminders"),
    owns<NVMCDNotification, NVMCDExpirations>("expirations", "templateExpirations"),
    owns<NVMCDEventNotification, NVMCDEnvelopeEvent>("envelopeEvents", "envelopeNotification"),
    owns<NVMCDEventNotification, NVMCDRecipientEvent>("recipientEvents", "eventNotification"),
    owns<NVMCDLockInformation, NVMCDUserInfo>("lockedByUser", "_lockInformation"),
    owns<NVMCDLockInformation, NVMCDErrorDetails>("errorDetails", "_lockInformation"),
    owns<NVMCDTemplateRole, NVMCDRecipientEmailNotification>("emailNotification", "_templateRole"),
    owns<NVMCDTemplateRole, NVMCDTabs>("tabs", "_templateRole"),
    owns<NVMCDEnvelopeDefinition, NVMCDDocument>("documents", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDAttachment>("attachments", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDRecipients>("recipients", "_envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDCustomFields>("customFields", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDEventNotification>("eventNotification", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDTemplateRole>("templateRoles", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDEmailSettings>("emailSettings", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDLockInformation>("lockInformation", "envelopeDefinition"),
    owns<NVMCDEnvelopeDefinition, NVMCDNotification>("notification", "envelopeDefinition"),
    owns<NVMCDEnvelopeTemplateDefinition, NVMCDUserInfo>("lastModifiedBy", "lastModified"),
    owns<NVMCDEnvelopeTemplateDefinition, NVMCDUserInfo>("owner", "owner"),
    owns<NVMCDEnvelopeTemplate, NVMCDDocument>("combinedDocument", "_combinedTemplate"),
    owns<NVMCDEnvelopeTemplate, NVMCDDocument>("documents", "template"),
    owns<NVMCDEnvelopeTemplate, NVMCDRecipients>("recipients", "template"),
    owns<NVMCDEnvelopeTemplate, NVMCDEnvelopeTemplateDefinition>("envelopeTemplateDefinition",
                                                                 "envelopeTemplate"),
    owns<NVMCDEnvelopeTemplate, NVMCDNotification>("notification", "notification"),
    owns<NVMCDEnvelopeTemplate, NVMCDCustomFields>("customFields", "envelopeTemplate"),
    owns<NVMCDEnvelopeTemplate, NVMCDEmailSettings>("emailSettings", "envelopeTemplate"),
};

// An index for every look-up. The first one holds all that the list of identifiers reads, in its order, so
// that long rows need not be touched.
constexpr const char* kLookUps[] = {
    "CREATE INDEX _envelopeList ON NVMCDEnvelopeDefinition (_id, status, envelopeId)",
    "CREATE INDEX _envelopeId ON NVMCDEnvelopeDefinition (envelopeId)",
    "CREATE INDEX _envelopeIdIgnoringCase ON NVMCDEnvelopeDefinition (envelopeId COLLATE NOCASE)",
    "CREATE INDEX _transactionId ON NVMCDEnvelopeDefinition (transactionId)",
    "CREATE INDEX _transactionIdIgnoringCase ON NVMCDEnvelopeDefinition (transactionId COLLATE NOCASE)",
    "CREATE INDEX _status ON NVMCDEnvelopeDefinition (status)",
    "CREATE INDEX _statusChanged ON NVMCDEnvelopeDefinition (statusChangedDateTime)",
    "CREATE INDEX _pending ON NVMCDEnvelopeDefinition (syncPending) WHERE syncPending = 1",
    "CREATE INDEX _documentId ON NVMCDDocument (documentId)",
    "CREATE INDEX _sandboxFilePath ON NVMCDDocument (sandboxFilePath)",
    "CREATE INDEX _filePath ON NVMCDDocument (filePath)",
    "CREATE INDEX _recipientId ON NVMCDRecipient (recipientId)",
    "CREATE INDEX _tabId ON NVMCDTab (tabId)",
    "CREATE INDEX _tabDocumentId ON NVMCDTab (documentId)",
    "CREATE INDEX _templateId ON NVMCDEnvelopeTemplate (templateId COLLATE NOCASE)",
    "CREATE INDEX _cachedRecord ON NVMCDCacheMetaData (uri, recordType)",
};

std::string_view columnType(FieldKind kind) {
    switch (kind) {
    case FieldKind::Number:
        return "NUMERIC";
    case FieldKind::DateTime:
        return "INTEGER"; // milliseconds since 1970
    case FieldKind::Bytes:
        return "BLOB";
    case FieldKind::Bool:
    case FieldKind::Integer:
        return "INTEGER NOT NULL DEFAULT 0";
    default:
        return "TEXT"; // lists as JSON
    }
}

std::string insertStatement(std::string_view table, const std::vector<std::string>& columns) {
    const std::vector<std::string> marks(columns.size(), "?");
    return "INSERT INTO " + sqlName(table) + " (" + joined(columns) + ") VALUES (" + joined(marks) + ")";
}

void writeStatements(Entity& entity) {
    std::vector<std::string> columns, assignments;
    for (const Field* field : entity.attributes) {
        columns.push_back(sqlName(field->name));
        assignments.push_back(columns.back() + " = ?");
    }
    const std::string table = sqlName(entity.name());
    entity.selectedColumns = joined({"_id"}) + (columns.empty() ? "" : ", " + joined(columns));
    entity.insert = columns.empty() ? "INSERT INTO " + table + " DEFAULT VALUES"
                                    : insertStatement(entity.name(), columns);
    if (!columns.empty())
        entity.update = "UPDATE " + table + " SET " + joined(assignments) + " WHERE _id = ?";
    entity.place = "UPDATE " + table + " SET _position = ? WHERE _id = ?";
    const std::string seal = sqlName(kSealColumn);
    entity.select = "SELECT " + entity.selectedColumns + (entity.isSealed() ? ", " + seal : "") + " FROM " +
                    table + " WHERE _id = ?";
    if (entity.isSealed()) entity.seal = "UPDATE " + table + " SET " + seal + " = ? WHERE _id = ?";
    entity.remove = "DELETE FROM " + table + " WHERE _id = ?";
    entity.removeAll = "DELETE FROM " + table;
    for (auto& inverse : entity.inverses) {
        auto all = columns;
        all.insert(all.end(), {sqlName(inverse.column), "_position"});
        if (!entity.ancestorColumn.empty()) all.push_back(sqlName(entity.ancestorColumn));
        inverse.insert = insertStatement(entity.name(), all);
        const std::string rest =
            " FROM " + table + " WHERE " + sqlName(inverse.column) + " = ? ORDER BY _position, _id";
        inverse.select = "SELECT " + entity.selectedColumns + rest;
        inverse.selectRows = "SELECT _id" + rest;
    }
}

} // namespace

const Field* Entity::attribute(std::string_view name) const {
    const auto found =
        std::find_if(attributes.begin(), attributes.end(), [&](const Field* f) { return f->name == name; });
    return found == attributes.end() ? nullptr : *found;
}

bool Entity::hasColumn(std::string_view column) const {
    return attribute(column) || (!column.empty() && column == ancestorColumn) ||
           std::any_of(inverses.begin(), inverses.end(),
                       [&](const Inverse& i) { return i.column == column; });
}

Model::Model() {
    std::map<const RecordType*, Entity*> byType;
    for (const EntityRow& row : kEntities) {
        auto* entity = new Entity{}; // lives as long as the process
        entity->type = &row.type();
        entity->object = row.object;
        for (const Field& field : entity->type->fields())
            if (!field.reference) entity->attributes.push_back(&field);
        byType[entity->type] = entity;
        order_.push_back(entity);
    }
    for (const OwnershipRow& row : kOwnerships) {
        Entity* owner = byType.at(&row.owner());
        Entity* owned = byType.at(&row.owned());
        owner->children.push_back({owner->type->find(row.member), owned, owned->inverses.size()});
        owned->inverses.push_back({row.inverse, owner, {}, {}, {}});
    }
    byType.at(&NVMCDRecipient::type())->ancestorColumn = "envelopeDefinition";
    for (auto& [type, entity] : byType)
        writeStatements(*entity);
}

const Model& Model::current() {
    static const Model& model = *new Model; // it, too, lives as long as the process
    return model;
}

const Entity& Model::entity(const RecordType& type) const {
    if (const Entity* entity = find(type.name()); entity && entity->type == &type) return *entity;
    throw NVMException("InvalidEntity", "no entity of the store: " + std::string(type.name()));
}

const Entity* Model::find(std::string_view name) const {
    const auto found =
        std::find_if(order_.begin(), order_.end(), [&](const Entity* e) { return e->name() == name; });
    return found == order_.end() ? nullptr : *found;
}

Schema schemaOfVersion2() {
    Schema schema{2, {}, {std::begin(kLookUps), std::end(kLookUps)}};
    for (const Entity* entity : Model::current().entities()) {
        Schema::Table& table = schema.tables.emplace_back();
        table.name = entity->name();
        for (const Field* field : entity->attributes)
            table.attributes.push_back({std::string(field->name), std::string(columnType(field->kind))});
        if (entity->isSealed()) table.attributes.push_back({std::string(kSealColumn), "TEXT"});
        for (const auto& inverse : entity->inverses)
            table.references.push_back({std::string(inverse.column), std::string(inverse.owner->name())});
        if (!entity->ancestorColumn.empty())
            table.references.push_back({std::string(entity->ancestorColumn), "NVMCDEnvelopeDefinition"});
    }
    return schema;
}

} // namespace norvane
