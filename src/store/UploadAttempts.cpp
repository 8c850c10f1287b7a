#include "src/store/UploadAttempts.h"

#include "src/store/Query.h"
#include "src/store/RowCodec.h"
#include "src/store/Seal.h"
#include "src/store/StoreWork.h"

#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

namespace {

const std::string kFind = "SELECT startedAt, envelopeId FROM nv_uploadAttempt WHERE transactionId = ?";
const std::string kBegin = "INSERT OR REPLACE INTO nv_uploadAttempt (transactionId, startedAt, outcome) "
                           "VALUES (?, ?, 'unknown')";
const std::string kAccepted =
    "INSERT OR REPLACE INTO nv_uploadAttempt (transactionId, startedAt, outcome, envelopeId) "
    "VALUES (?1, coalesce((SELECT startedAt FROM nv_uploadAttempt WHERE transactionId = ?1), "
    "0), 'accepted', ?2)";
const std::string kNameEnvelope = "UPDATE NVMCDEnvelopeDefinition SET envelopeId = ? WHERE _id = ?";
const std::string kRefused = "DELETE FROM nv_uploadAttempt WHERE transactionId = ?";

void nameEnvelope(Connection& connection, const std::string& transactionId, const std::string& envelopeId) {
    const Query named(NVMCDEnvelopeDefinition::fetchRequest().where(
        "transactionId", FetchRequest::Match::Equal, transactionId));
    Reseal reseal(connection);
    for (const std::int64_t row : named.rows(connection)) {
        reseal.aboutToChange(named.entity(), row);
        const auto statement = connection.kept(kNameEnvelope);
        statement->bind(1, envelopeId);
        statement->bind(2, row);
        statement->exec();
    }
    reseal.finish();
}

} // namespace

Result<std::optional<UploadAttempts::Attempt>> UploadAttempts::find(const std::string& transactionId) const {
    std::optional<Attempt> attempt;
    const auto error = StoreWork::read(store_, [&](Connection& connection) {
        const auto statement = connection.kept(kFind);
        statement->bind(1, transactionId);
        if (!statement->executeStep()) return;
        attempt.emplace();
        attempt->startedAt = Date(Date::duration(statement->getColumn(0).getInt64()));
        if (!statement->isColumnNull(1)) attempt->envelopeId = statement->getColumn(1).getString();
    });
    if (error) return *error;
    return attempt;
}

Failure UploadAttempts::begin(const std::string& transactionId, Date now) {
    return StoreWork::write(store_, [&](Connection& connection) {
        const auto statement = connection.kept(kBegin);
        statement->bind(1, transactionId);
        bindValue(*statement, 2, now);
        statement->exec();
    });
}

Failure UploadAttempts::accepted(const std::string& transactionId, const std::string& envelopeId) {
    return StoreWork::write(store_, [&](Connection& connection) {
        const auto attempt = connection.kept(kAccepted);
        attempt->bind(1, transactionId);
        attempt->bind(2, envelopeId);
        attempt->exec();
        nameEnvelope(connection, transactionId, envelopeId);
    });
}

Failure UploadAttempts::refused(const std::string& transactionId) {
    return StoreWork::write(store_, [&](Connection& connection) {
        const auto statement = connection.kept(kRefused);
        statement->bind(1, transactionId);
        statement->exec();
    });
}

} // namespace norvane
