#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

// The part of the envelope handler that reads.

namespace norvane {

namespace {

using Match = FetchRequest::Match;

constexpr std::string_view kDraftStatus = "created";

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> envelopes(const FetchRequest& request,
                                                              bool withDocuments) {
    std::vector<std::shared_ptr<NVMEnvelopeDefinition>> envelopes;
    const auto store = ObjectStore::defaultStore();
    if (!store) return envelopes;
    const auto found = store->defaultContext().fetch<NVMCDEnvelopeDefinition>(request);
    if (!found) return envelopes;
    for (const auto& stored : *found)
        envelopes.push_back(std::make_shared<NVMEnvelopeDefinition>(*stored, withDocuments));
    return envelopes;
}

template <class T>
std::shared_ptr<T> first(const FetchRequest& request, const ManagedObjectContext& context) {
    auto found = context.fetchFirst<T>(request);
    return found ? std::move(found).value() : nullptr;
}

std::optional<std::string> text(const Value& value) {
    const auto* text = value.asString();
    return text ? std::optional(*text) : std::nullopt;
}

std::vector<std::vector<Value>> properties(const FetchRequest& request,
                                           const std::vector<std::string_view>& columns) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    auto rows = store->defaultContext().fetchProperties(request, columns);
    return rows ? std::move(rows).value() : std::vector<std::vector<Value>>{};
}

} // namespace

FetchRequest NVMEnvelopesHandler::nonDraftCachedEnvelopesFetchRequest() {
    return NVMCDEnvelopeDefinition::fetchRequest().where("status", Match::NotEqual, kDraftStatus);
}

FetchRequest NVMEnvelopesHandler::draftCachedEnvelopesFetchRequest() {
    return NVMCDEnvelopeDefinition::fetchRequest().where("status", Match::Equal, kDraftStatus);
}

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> NVMEnvelopesHandler::cachedEnvelopes() {
    return envelopes(nonDraftCachedEnvelopesFetchRequest(), false);
}

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> NVMEnvelopesHandler::cachedDraftEnvelopes() {
    return envelopes(draftCachedEnvelopesFetchRequest(), false);
}

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> NVMEnvelopesHandler::cachedDraftEnvelopesWithDocuments() {
    return envelopes(draftCachedEnvelopesFetchRequest(), true);
}

std::shared_ptr<NVMEnvelopeDefinition>
NVMEnvelopesHandler::cachedEnvelopeById(const std::string& envelopeId) {
    const auto store = ObjectStore::defaultStore();
    const auto stored = store ? findEnvelopeWithId(envelopeId, store->defaultContext()) : nullptr;
    return stored ? std::make_shared<NVMEnvelopeDefinition>(*stored, true) : nullptr;
}

std::vector<Dictionary> NVMEnvelopesHandler::fetchNonDraftCachedEnvelopesWithPropertyEnvelopeId() {
    std::vector<Dictionary> dictionaries;
    for (const auto& row : properties(nonDraftCachedEnvelopesFetchRequest(), {NVMEnvelopeIdKey}))
        if (!row.front().isNull()) dictionaries.push_back({{std::string(NVMEnvelopeIdKey), row.front()}});
    return dictionaries;
}

std::vector<std::string> NVMEnvelopesHandler::cachedEnvelopeIds() {
    std::vector<std::string> ids;
    for (const auto& row : properties(nonDraftCachedEnvelopesFetchRequest(), {NVMEnvelopeIdKey}))
        if (const auto* id = row.front().asString()) ids.push_back(*id);
    return ids;
}

std::vector<EnvelopeSummary> NVMEnvelopesHandler::cachedEnvelopeSummaries() {
    std::vector<EnvelopeSummary> summaries;
    for (const auto& row : properties(NVMCDEnvelopeDefinition::fetchRequest(),
                                      {"envelopeId", "transactionId", "templateId", "status", "emailSubject",
                                       "syncPending", "syncPendingUploadRetryCount", "syncFailureReason"})) {
        summaries.push_back({text(row[0]), text(row[1]), text(row[2]), text(row[3]), text(row[4]),
                             row[5].boolValue(), row[6].integerValue(), text(row[7])});
    }
    return summaries;
}

std::size_t NVMEnvelopesHandler::cachedDraftEnvelopeCount() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return 0;
    const auto count = store->defaultContext().count(draftCachedEnvelopesFetchRequest());
    return count ? *count : 0;
}

std::shared_ptr<NVMCDEnvelopeDefinition>
NVMEnvelopesHandler::findEnvelopeWithId(const std::string& envelopeId, const ManagedObjectContext& context) {
    return first<NVMCDEnvelopeDefinition>(
        NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::Equal, envelopeId), context);
}

std::shared_ptr<NVMCDDocument> NVMEnvelopesHandler::findDocumentWithId(const std::string& documentId,
                                                                       const ManagedObjectContext& context) {
    return first<NVMCDDocument>(NVMCDDocument::fetchRequest().where("documentId", Match::Equal, documentId),
                                context);
}

std::shared_ptr<NVMCDDocument> NVMEnvelopesHandler::findDocumentWithId(const std::string& documentId,
                                                                       const std::string& envelopeId,
                                                                       const ManagedObjectContext& context) {
    const auto ids = context.fetchIDs(
        NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::Equal, envelopeId).limitTo(1));
    if (!ids || ids->empty()) return nullptr;
    return first<NVMCDDocument>(NVMCDDocument::fetchRequest()
                                    .where("documentId", Match::Equal, documentId)
                                    .where("envelopeDefinition", Match::Equal, ids->front().row),
                                context);
}

std::shared_ptr<NVMCDRecipient>
NVMEnvelopesHandler::findRecipientWithId(const std::string& recipientId,
                                         const ManagedObjectContext& context) {
    return first<NVMCDRecipient>(
        NVMCDRecipient::fetchRequest().where("recipientId", Match::Equal, recipientId), context);
}

std::shared_ptr<NVMCDTab> NVMEnvelopesHandler::findTabWithId(const std::string& tabId,
                                                             const ManagedObjectContext& context) {
    return first<NVMCDTab>(NVMCDTab::fetchRequest().where("tabId", Match::Equal, tabId), context);
}

std::vector<std::shared_ptr<NVMCDTab>>
NVMEnvelopesHandler::findTabsWithDocumentId(const std::string& documentId,
                                            const ManagedObjectContext& context) {
    auto found =
        context.fetch<NVMCDTab>(NVMCDTab::fetchRequest().where("documentId", Match::Equal, documentId));
    return found ? std::move(found).value() : std::vector<std::shared_ptr<NVMCDTab>>{};
}

} // namespace norvane
