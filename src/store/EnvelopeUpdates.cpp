#include "src/store/EnvelopeDocuments.h"
#include "src/store/Notify.h"
#include "src/store/RecipientLists.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoredEnvelope.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/mapping/EnvelopeMapping.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMEnvelopesHandler.h>

#include <algorithm>

// The part of the envelope handler that changes pieces of stored envelopes.

namespace norvane {

namespace {

using Envelope = std::shared_ptr<NVMCDEnvelopeDefinition>;
/// How the envelope to change is found, and what is told of it until then.
struct Wanted {
    std::function<Result<Envelope>(const ManagedObjectContext&)> find;
    std::optional<std::string> envelopeId;
};
using Change = std::function<Failure(NVMCDEnvelopeDefinition&, EnvelopeDocuments&)>;

NVMError notFound(const std::string& what) {
    return storeError(StoreError::NotFound, "The " + what + " is not stored.");
}

/// An update under way.
struct PieceUpdate {
    PieceUpdate(const std::shared_ptr<ObjectStore>& store, Wanted what,
                NVMEnvelopesHandler::EnvelopeCompletion whenDone)
        : documents(*store)
        , wanted(std::move(what))
        , completion(std::move(whenDone)) {}

    EnvelopeDocuments documents;
    const Wanted wanted;
    const NVMEnvelopesHandler::EnvelopeCompletion completion;
    Envelope stored;

    void ended(const Failure& error) {
        error ? documents.discard() : documents.keep();
        const auto userInfo = stored ? cacheUserInfo(stored->envelopeId, stored->templateId, error)
                                     : cacheUserInfo(wanted.envelopeId, std::nullopt, error);
        postNotification(error ? NVMEnvelopeUpdateFailedNotification : NVMEnvelopeUpdatedNotification,
                         userInfo);
        if (!completion) return;
        completion(error ? nullptr : std::make_shared<NVMEnvelopeDefinition>(*stored, true), error);
    }
};

void updateStored(Wanted wanted, Change change, NVMEnvelopesHandler::EnvelopeCompletion completion) {
    const auto store = ObjectStore::defaultStore();
    if (!store) {
        Platform::current().executors->mainQueue()->async(
            [id = wanted.envelopeId, completion = std::move(completion)] {
                const auto error = storeNotOpen();
                postNotification(NVMEnvelopeUpdateFailedNotification, cacheUserInfo(id, std::nullopt, error));
                if (completion) completion(nullptr, error);
            });
        return;
    }
    const auto update = std::make_shared<PieceUpdate>(store, std::move(wanted), std::move(completion));
    const auto write = [update, change = std::move(change)](ManagedObjectContext& context) -> Failure {
        auto found = update->wanted.find(context);
        if (!found) return found.error();
        if (!*found) return notFound("envelope");
        update->stored = *std::move(found);
        const auto before = EnvelopeDocuments::paths(*update->stored);
        if (auto error = change(*update->stored, update->documents)) return error;
        context.update(update->stored);
        for (const auto& path : before)
            context.dropFile(path); // those that are still named stay
        return std::nullopt;
    };
    store->saveInBackground(write, [update](const Failure& error) { update->ended(error); });
}

Wanted byId(const NVMEnvelopeDefinition& envelope) {
    return {[id = envelope.envelopeId.value_or("")](const ManagedObjectContext& context) {
                return storedEnvelope(id, context);
            },
            envelope.envelopeId};
}

/// The first envelope in which a recipient of that identifier stands; templates have such too.
Wanted byRecipient(const NVMRecipient& signer) {
    const auto find =
        [id = signer.recipientId.value_or("")](const ManagedObjectContext& context) -> Result<Envelope> {
        const auto rows =
            context.fetchProperties(NVMCDRecipient::fetchRequest()
                                        .where("recipientId", FetchRequest::Match::Equal, id)
                                        .where("envelopeDefinition", FetchRequest::Match::NotEqual)
                                        .limitTo(1),
                                    {"envelopeDefinition"});
        if (!rows) return rows.error();
        if (rows->empty()) return Envelope();
        return context.objectWithID<NVMCDEnvelopeDefinition>(
            {NVMCDEnvelopeDefinition::type().name(), rows->front().front().integerValue()});
    };
    return {find, std::nullopt};
}

NVMCDRecipient* findRecipient(const NVMCDEnvelopeDefinition& envelope, const std::optional<std::string>& id) {
    if (!envelope.recipients || !id) return nullptr;
    const auto place = findRecipientPlace(*envelope.recipients, *id);
    return place.list ? (**place.list)[place.index].get() : nullptr;
}

std::shared_ptr<NVMDocument> copyOf(const NVMDocument& document) {
    return std::make_shared<NVMDocument>(document, true);
}

/// A recipient to store, as it was when it was given.
struct GivenRecipient {
    explicit GivenRecipient(const NVMRecipient& recipient)
        : kind(&recipient.recordType()) {
        nvm_mapToNvmcdRecipient(recipient, *form);
    }

    /// What is stored and no field of the record stays.
    void replace(const NVMCDRecipient& stored) const {
        form->objectID = stored.objectID;
        for (const Field& field : NVMCDRecipient::type().fields())
            if (!kind->find(field.name) && field.name != "_signature")
                copyField(field, &stored, field, form.get());
    }

    const RecordType* kind;
    std::shared_ptr<NVMCDRecipient> form = std::make_shared<NVMCDRecipient>();
};

/// Puts the recipient among those of its kind: in its place when it is there already, with its tabs when it
/// comes from another kind.
Failure addOrUpdateRecipient(NVMCDEnvelopeDefinition& envelope, const GivenRecipient& recipient) {
    const auto& given = recipient.form;
    if (!envelope.recipients) envelope.recipients = std::make_shared<NVMCDRecipients>();
    const auto kind = static_cast<NVMRecipientType>(given->recipientType.value_or(0));
    auto* list = recipientsOfKind(*envelope.recipients, kind);
    if (!list) return notFound("kind of the recipient");
    const auto place = findRecipientPlace(*envelope.recipients, given->recipientId.value_or(""));
    if (place.list == list) {
        recipient.replace(*(**list)[place.index]);
        (**list)[place.index] = given;
        return std::nullopt;
    }
    if (place.list) {
        given->tabs = (**place.list)[place.index]->tabs;
        (*place.list)->erase((*place.list)->begin() + static_cast<std::ptrdiff_t>(place.index));
    }
    if (!*list) list->emplace();
    (*list)->push_back(given);
    return std::nullopt;
}

Failure addOrUpdateTab(NVMCDRecipient& signer, const std::shared_ptr<NVMCDTab>& given) {
    if (!signer.tabs) signer.tabs = std::make_shared<NVMCDTabs>();
    const std::string id = given->tabId.value_or("");
    const auto stored = findTab(*signer.tabs, id);
    auto* list = tabsOfKind(*signer.tabs, static_cast<NVMTabType>(given->type_.value_or(0)));
    if (stored && (!list || stored->type_ == given->type_)) {
        given->objectID = stored->objectID;
        *stored = *given;
        return std::nullopt;
    }
    if (!list) return notFound("list of the tab's kind");
    if (stored) removeTab(*signer.tabs, id); // it has become another kind, which its list tells
    if (!*list) list->emplace();
    (*list)->push_back(given);
    return std::nullopt;
}

} // namespace

void NVMEnvelopesHandler::updateCachedEnvelopeUpdateDocuments(
    const NVMEnvelopeDefinition& envelope, const std::vector<std::shared_ptr<NVMDocument>>& documents,
    EnvelopeCompletion completion) {
    std::vector<std::shared_ptr<NVMDocument>> copies;
    copies.reserve(documents.size());
    for (const auto& document : documents)
        copies.push_back(copyOf(*document));
    const auto change = [copies = std::move(copies)](NVMCDEnvelopeDefinition& stored,
                                                     EnvelopeDocuments& files) -> Failure {
        if (!stored.documents) return std::nullopt;
        for (const auto& document : copies) {
            const auto found =
                std::find_if(stored.documents->begin(), stored.documents->end(), [&](const auto& candidate) {
                    return candidate->documentId == document->documentId;
                });
            if (found == stored.documents->end()) continue;
            nvm_mapToNvmcdDocument(*document, **found);
            if (auto error = files.prepare(*document, **found, stored.objectID.row)) return error;
        }
        return std::nullopt;
    };
    updateStored(byId(envelope), change, std::move(completion));
}

void NVMEnvelopesHandler::updateCachedEnvelopeAddOrUpdateDocument(const NVMEnvelopeDefinition& envelope,
                                                                  const NVMDocument& document,
                                                                  EnvelopeCompletion completion) {
    const auto change = [copy = copyOf(document)](NVMCDEnvelopeDefinition& stored,
                                                  EnvelopeDocuments& files) -> Failure {
        if (!stored.documents) stored.documents.emplace();
        auto found =
            std::find_if(stored.documents->begin(), stored.documents->end(),
                         [&](const auto& candidate) { return candidate->documentId == copy->documentId; });
        if (found == stored.documents->end())
            found = stored.documents->insert(found, std::make_shared<NVMCDDocument>());
        nvm_mapToNvmcdDocument(*copy, **found);
        return files.prepare(*copy, **found, stored.objectID.row);
    };
    updateStored(byId(envelope), change, std::move(completion));
}

void NVMEnvelopesHandler::updateCachedEnvelopeAddOrUpdateRecipient(
    const NVMEnvelopeDefinition& envelope, const std::shared_ptr<NVMRecipient>& recipient,
    EnvelopeCompletion completion) {
    if (recipient->recipientId.value_or("").empty())
        recipient->recipientId = Platform::current().random->uuidString();
    const auto change = [given = GivenRecipient(*recipient)](NVMCDEnvelopeDefinition& stored,
                                                             EnvelopeDocuments&) {
        return addOrUpdateRecipient(stored, given);
    };
    updateStored(byId(envelope), change, std::move(completion));
}

void NVMEnvelopesHandler::updateCachedEnvelopeRemoveRecipient(const NVMEnvelopeDefinition& envelope,
                                                              const NVMRecipient& recipient,
                                                              EnvelopeCompletion completion) {
    const auto change = [id = recipient.recipientId.value_or("")](NVMCDEnvelopeDefinition& stored,
                                                                  EnvelopeDocuments&) -> Failure {
        if (!stored.recipients) return notFound("recipient");
        const auto place = findRecipientPlace(*stored.recipients, id);
        if (!place.list) return notFound("recipient");
        (*place.list)->erase((*place.list)->begin() + static_cast<std::ptrdiff_t>(place.index));
        return std::nullopt;
    };
    updateStored(byId(envelope), change, std::move(completion));
}

void NVMEnvelopesHandler::updateCachedEnvelopeMoveRecipient(const NVMEnvelopeDefinition& envelope,
                                                            const NVMRecipient& recipient, std::size_t from,
                                                            std::size_t to, EnvelopeCompletion completion) {
    const auto change = [kind = recipient.recipientType, from, to](NVMCDEnvelopeDefinition& stored,
                                                                   EnvelopeDocuments&) -> Failure {
        const bool moves = kind == NVMRecipientTypeInPersonSigner || kind == NVMRecipientTypeSigner ||
                           kind == NVMRecipientTypeCarbonCopy;
        auto* list = moves && stored.recipients ? recipientsOfKind(*stored.recipients, kind) : nullptr;
        if (!list || !*list || from >= (*list)->size() || to >= (*list)->size()) return std::nullopt;
        auto moved = std::move((**list)[from]);
        (*list)->erase((*list)->begin() + static_cast<std::ptrdiff_t>(from));
        (*list)->insert((*list)->begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
        return std::nullopt;
    };
    updateStored(byId(envelope), change, std::move(completion));
}

void NVMEnvelopesHandler::updateSignerAddOrUpdateTab(const NVMRecipient& signer,
                                                     const std::shared_ptr<NVMTab>& tab,
                                                     EnvelopeCompletion completion) {
    // The tab is mapped here, while the caller holds it still.
    auto form = std::make_shared<NVMCDTab>();
    nvm_mapNvmcdTab(*form, *tab);
    const auto change = [recipientId = signer.recipientId, form](NVMCDEnvelopeDefinition& stored,
                                                                 EnvelopeDocuments&) -> Failure {
        NVMCDRecipient* recipient = findRecipient(stored, recipientId);
        return recipient ? addOrUpdateTab(*recipient, form) : notFound("recipient");
    };
    updateStored(byRecipient(signer), change, std::move(completion));
}

void NVMEnvelopesHandler::updateSignerRemoveTab(const NVMRecipient& signer, const NVMTab& tab,
                                                EnvelopeCompletion completion) {
    const auto change = [recipientId = signer.recipientId, tabId = tab.tabId.value_or("")](
                            NVMCDEnvelopeDefinition& stored, EnvelopeDocuments&) -> Failure {
        NVMCDRecipient* recipient = findRecipient(stored, recipientId);
        if (!recipient || !recipient->tabs || !removeTab(*recipient->tabs, tabId)) return notFound("tab");
        return std::nullopt;
    };
    updateStored(byRecipient(signer), change, std::move(completion));
}

} // namespace norvane
