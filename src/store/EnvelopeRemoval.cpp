#include "src/store/EnvelopeRemoval.h"

#include "src/store/StoreWork.h"

#include <norvane/store/NVMCDCacheMetaData.h>
#include <norvane/store/NVMCDDocuments.h>
#include <norvane/store/NVMEnvelopeCachingPolicy.h>

namespace norvane {

namespace {

const std::string kForgetAttempt = "DELETE FROM nv_uploadAttempt WHERE transactionId = ?";

} // namespace

void removeEnvelope(ManagedObjectContext& context, const ManagedObjectID& envelope, bool preserveDocuments) {
    if (!preserveDocuments) {
        const auto documents =
            context.fetchProperties(NVMCDDocument::fetchRequest().where(
                                        "envelopeDefinition", FetchRequest::Match::Equal, envelope.row),
                                    {"sandboxFilePath"});
        // Files that could not be named stay until they are found to belong to nothing.
        if (documents) {
            for (const auto& document : *documents)
                if (const auto* path = document.front().asString()) context.dropFile(*path);
        }
    }
    context.remove(envelope);
}

void forgetCaching(ManagedObjectContext& context, const std::optional<std::string>& identifier) {
    if (identifier)
        context.removeMatching(
            NVMCDCacheMetaData::cachePredicateForURI(*identifier, std::string(kEnvelopeCachingIdentifier)));
}

void forgetUpload(ManagedObjectContext& context, const std::optional<std::string>& transactionId) {
    if (!transactionId) return;
    StoreWork::join(context, [transactionId = *transactionId](Connection& connection) {
        const auto statement = connection.kept(kForgetAttempt);
        statement->bind(1, transactionId);
        statement->exec();
    });
}

} // namespace norvane
