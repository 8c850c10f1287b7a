#include "src/store/EnvelopeRemoval.h"

#include "src/store/StoreWork.h"

#include <norvane/store/NVMCDCacheMetaData.h>
#include <norvane/store/NVMEnvelopeCachingPolicy.h>

namespace norvane {

namespace {

const std::string kForgetAttempt = "DELETE FROM nv_uploadAttempt WHERE transactionId = ?";

} // namespace

void removeEnvelope(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope,
                    bool preserveDocuments) {
    context.remove(envelope.objectID);
    if (envelope.documents && !preserveDocuments) {
        for (const auto& document : *envelope.documents)
            if (document->sandboxFilePath) context.dropFile(*document->sandboxFilePath);
    }
}

void forgetCaching(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope) {
    for (const auto& identifier : {envelope.envelopeId, envelope.transactionId}) {
        if (identifier)
            context.removeMatching(NVMCDCacheMetaData::cachePredicateForURI(
                *identifier, std::string(kEnvelopeCachingIdentifier)));
    }
}

void forgetUpload(ManagedObjectContext& context, const NVMCDEnvelopeDefinition& envelope) {
    if (!envelope.transactionId) return;
    StoreWork::join(context, [transactionId = *envelope.transactionId](Connection& connection) {
        const auto statement = connection.kept(kForgetAttempt);
        statement->bind(1, transactionId);
        statement->exec();
    });
}

} // namespace norvane
