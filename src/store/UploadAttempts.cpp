#include "src/store/UploadAttempts.h"

#include "src/store/RowCodec.h"
#include "src/store/StoreWork.h"

namespace norvane {

namespace {

const std::string kFind = "SELECT startedAt, envelopeId FROM nv_uploadAttempt WHERE transactionId = ?";
const std::string kBegin = "INSERT OR REPLACE INTO nv_uploadAttempt (transactionId, startedAt, outcome) "
                           "VALUES (?, ?, 'unknown')";
const std::string kAccepted =
    "INSERT OR REPLACE INTO nv_uploadAttempt (transactionId, startedAt, outcome, envelopeId) "
    "VALUES (?1, coalesce((SELECT startedAt FROM nv_uploadAttempt WHERE transactionId = ?1), "
    "0), 'accepted', ?2)";
const std::string kNameEnvelope = "UPDATE NVMCDEnvelopeDefinition SET envelopeId = ? WHERE transactionId = ?";
const std::string kRefused = "DELETE FROM nv_uploadAttempt WHERE transactionId = ?";

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
        const auto envelope = connection.kept(kNameEnvelope);
        envelope->bind(1, envelopeId);
        envelope->bind(2, transactionId);
        envelope->exec();
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
