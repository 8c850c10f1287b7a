#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"

#include <norvane/store/EnvelopeSummary.h>
#include <norvane/store/NVMEnvelopesHandler.h>

#include <SQLiteCpp/Column.h>

#include <vector>

namespace norvane {

namespace {

constexpr int kRowsAtOnce = 256;

const std::string kPage =
    "SELECT _id, envelopeId, transactionId, templateId, status, emailSubject, syncPending, "
    "syncPendingUploadRetryCount, syncFailureReason FROM NVMCDEnvelopeDefinition "
    "WHERE _id > ? ORDER BY _id LIMIT " +
    std::to_string(kRowsAtOnce);

std::optional<std::string> text(SQLite::Statement& row, int column) {
    if (row.isColumnNull(column)) return std::nullopt;
    return row.getColumn(column).getString();
}

EnvelopeSummary summaryOf(SQLite::Statement& row) {
    return {text(row, 1),
            text(row, 2),
            text(row, 3),
            text(row, 4),
            text(row, 5),
            row.getColumn(6).getInt() != 0,
            row.getColumn(7).getInt64(),
            text(row, 8)};
}

} // namespace

Failure
NVMEnvelopesHandler::eachCachedEnvelopeSummary(const std::function<bool(const EnvelopeSummary&)>& take) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    for (std::int64_t last = 0;;) {
        std::vector<EnvelopeSummary> page;
        const auto readPage = [&](Connection& connection) {
            const auto statement = connection.kept(kPage);
            statement->bind(1, last);
            while (statement->executeStep()) {
                last = statement->getColumn(0).getInt64();
                page.push_back(summaryOf(*statement));
            }
        };
        if (auto error = StoreWork::read(*store, readPage)) return error;
        if (page.empty()) return std::nullopt;
        for (const EnvelopeSummary& summary : page)
            if (!take(summary)) return std::nullopt;
    }
}

} // namespace norvane
