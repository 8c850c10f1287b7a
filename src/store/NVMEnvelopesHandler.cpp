#include "src/store/StoredEnvelope.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/store/StoreErrors.h>

// The part of the envelope handler that reads.

namespace norvane {

namespace {

using Match = FetchRequest::Match;

constexpr std::string_view kDraftStatus = "created";

void tell(const NVMError& error) {
    const bool isClosed =
        error.domain == kStoreErrorDomain && error.code == static_cast<std::int64_t>(StoreError::NotOpen);
    if (const auto log = Platform::current().log; log && !isClosed)
        log->write(LogLevel::Error, "store: look-up: " + error.localizedDescription());
}

/// Look-ups report no errors, deliberately; the log does.
template <class T>
T foundOrNone(Result<T> found) {
    if (found) return std::move(found).value();
    tell(found.error());
    return T();
}

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> envelopes(const FetchRequest& request,
                                                              bool withDocuments) {
    std::vector<std::shared_ptr<NVMEnvelopeDefinition>> envelopes;
    const auto store = ObjectStore::defaultStore();
    if (!store) return envelopes;
    for (const auto& stored : foundOrNone(store->defaultContext().fetch<NVMCDEnvelopeDefinition>(request)))
        envelopes.push_back(std::make_shared<NVMEnvelopeDefinition>(*stored, withDocuments));
    return envelopes;
}

template <class T>
std::shared_ptr<T> first(const FetchRequest& request, const ManagedObjectContext& context) {
    return foundOrNone(context.fetchFirst<T>(request));
}

std::vector<std::vector<Value>> properties(const FetchRequest& request,
                                           const std::vector<std::string_view>& columns) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    return foundOrNone(store->defaultContext().fetchProperties(request, columns));
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

std::size_t NVMEnvelopesHandler::cachedDraftEnvelopeCount() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return 0;
    return foundOrNone(store->defaultContext().count(draftCachedEnvelopesFetchRequest()));
}

Result<std::shared_ptr<NVMCDEnvelopeDefinition>> storedEnvelope(const std::string& envelopeId,
                                                                const ManagedObjectContext& context) {
    return context.fetchFirst<NVMCDEnvelopeDefinition>(
        NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::Equal, envelopeId));
}

std::shared_ptr<NVMCDEnvelopeDefinition>
NVMEnvelopesHandler::findEnvelopeWithId(const std::string& envelopeId, const ManagedObjectContext& context) {
    return foundOrNone(storedEnvelope(envelopeId, context));
}

std::shared_ptr<NVMCDDocument> NVMEnvelopesHandler::findDocumentWithId(const std::string& documentId,
                                                                       const ManagedObjectContext& context) {
    return first<NVMCDDocument>(NVMCDDocument::fetchRequest().where("documentId", Match::Equal, documentId),
                                context);
}

std::shared_ptr<NVMCDDocument> NVMEnvelopesHandler::findDocumentWithId(const std::string& documentId,
                                                                       const std::string& envelopeId,
                                                                       const ManagedObjectContext& context) {
    const auto ids = foundOrNone(context.fetchIDs(
        NVMCDEnvelopeDefinition::fetchRequest().where("envelopeId", Match::Equal, envelopeId).limitTo(1)));
    if (ids.empty()) return nullptr;
    return first<NVMCDDocument>(NVMCDDocument::fetchRequest()
                                    .where("documentId", Match::Equal, documentId)
                                    .where("envelopeDefinition", Match::Equal, ids.front().row),
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
    return foundOrNone(
        context.fetch<NVMCDTab>(NVMCDTab::fetchRequest().where("documentId", Match::Equal, documentId)));
}

} // namespace norvane
