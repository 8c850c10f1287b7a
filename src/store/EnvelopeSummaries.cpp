#include "src/store/RowCodec.h"
#include "src/store/Schema.h"
#include "src/store/Seal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"

#include <norvane/store/EnvelopeSummary.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

#include <SQLiteCpp/Column.h>

#include <vector>

namespace norvane {

namespace {

constexpr int kRowsAtOnce = 256;

struct Row {
    EnvelopeSummary summary;
    bool isDamaged = false; ///< not what was written
};

const std::string& pageStatement(const Entity& entity) {
    static const std::string& statement = *new std::string(
        "SELECT " + entity.selectedColumns + ", " + sqlName(kSealColumn) + " FROM " + sqlName(entity.name()) +
        " WHERE _id > ? ORDER BY _id LIMIT " + std::to_string(kRowsAtOnce));
    return statement;
}

EnvelopeSummary summaryOf(const NVMCDEnvelopeDefinition& envelope) {
    return {envelope.envelopeId,
            envelope.transactionId,
            envelope.templateId,
            envelope.status,
            envelope.emailSubject,
            envelope.syncPending.value_or(0) != 0,
            envelope.pendingSyncRetriesCount(),
            envelope.syncFailureReason};
}

Row readRow(SQLite::Statement& statement, const Entity& entity) {
    NVMCDEnvelopeDefinition envelope; // without what it owns
    readAttributes(statement, 1, entity, &envelope);
    const int sealColumn = static_cast<int>(entity.attributes.size()) + 1;
    const bool isSealed = !statement.isColumnNull(sealColumn);
    return {summaryOf(envelope),
            isSealed &&
                !statement.getColumn(sealColumn).getString().starts_with(rowSealOf(entity, &envelope))};
}

/// Takes the rows until it answers no. No lock of the store is held while it does.
template <class Take>
Failure eachRow(const Take& take) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    const Entity& entity = Model::current().entity(NVMCDEnvelopeDefinition::type());
    for (std::int64_t last = 0;;) {
        std::vector<Row> page;
        const auto readPage = [&](Connection& connection) {
            const auto statement = connection.kept(pageStatement(entity));
            statement->bind(1, last);
            while (statement->executeStep()) {
                last = statement->getColumn(0).getInt64();
                page.push_back(readRow(*statement, entity));
            }
        };
        if (auto error = StoreWork::read(*store, readPage)) return error;
        if (page.empty()) return std::nullopt;
        for (const Row& row : page)
            if (!take(row)) return std::nullopt;
    }
}

} // namespace

std::vector<EnvelopeSummary> NVMEnvelopesHandler::cachedEnvelopeSummaries() {
    std::vector<EnvelopeSummary> summaries;
    // Look-ups report no errors, deliberately.
    static_cast<void>(eachRow([&](const Row& row) {
        summaries.push_back(row.summary);
        return true;
    }));
    return summaries;
}

Failure
NVMEnvelopesHandler::eachCachedEnvelopeSummary(const std::function<bool(const EnvelopeSummary&)>& take) {
    Failure damage;
    const auto error = eachRow([&](const Row& row) {
        if (!row.isDamaged) return take(row.summary);
        if (!damage)
            damage =
                storeError(StoreError::Damaged, "The stored envelope " +
                                                    row.summary.envelopeId.value_or("without identifier") +
                                                    " is not what was written.");
        return true;
    });
    return error ? error : damage;
}

} // namespace norvane
