#include "src/platform/AsciiText.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVMApi.h>
#include <norvane/platform/HttpSession.h>
#include <norvane/sdk/Errors.h>
#include <norvane/store/EnvelopeUploader.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr std::int64_t kRequestTimeout = 408;

/// Whether a request that ended so cannot have reached the service as a whole. What a proxy or a failing
/// server says (a status from 500 on) is no proof.
bool surelyNotTaken(const NVMError& error) {
    if (error.domain == kStatusErrorDomain)
        return error.code >= 400 && error.code < 500 && error.code != kRequestTimeout;
    if (error.domain == kTransportErrorDomain) {
        if (error.code == static_cast<std::int64_t>(TransportError::Refused)) return true;
        const auto sent = error.userInfo.find(kTransportRequestSentKey);
        return sent != error.userInfo.end() && !sent->second.boolValue();
    }
    return error.domain == kRequestErrorDomain || error.domain == NVM_USER_NOT_LOGGED_IN_ERROR;
}

NVMError noEnvelopeId() {
    return NVMError::make(std::string(kDeserializationErrorDomain),
                          static_cast<std::int64_t>(DeserializationError::NullValue),
                          "The service's answer names no envelope.");
}

NVMError noList() {
    return NVMError::make(std::string(kDeserializationErrorDomain),
                          static_cast<std::int64_t>(DeserializationError::TypeMismatch),
                          "The service's answer is no list of envelopes.");
}

/// An answer that merely lacks everything is no word of the service that it does not know an envelope.
bool isList(const NVESEnvelopesInformation& information) {
    return information.envelopes || information.envelopeTransactionStatuses || information.resultSetSize ||
           information.totalSetSize;
}

EnvelopeUploader::Answer answerOf(const NVESEnvelopeSummary* summary, const Failure& error) {
    if (error) return {std::nullopt, error, surelyNotTaken(*error)};
    if (!summary || !summary->envelopeId || summary->envelopeId->empty())
        return {std::nullopt, noEnvelopeId(), false};
    return {summary->envelopeId, std::nullopt, true};
}

/// Adds what the records say under the identifiers as they were asked for, with empty text for an envelope
/// that the service knows of but has not named.
template <class Records>
void addFound(std::map<std::string, std::string>& found, const std::vector<std::string>& asked,
              const Records& records) {
    if (!records) return;
    for (const auto& record : *records) {
        if (!record->transactionId) continue;
        for (const auto& transactionId : asked) {
            if (!asciiEqualsIgnoringCase(transactionId, *record->transactionId)) continue;
            std::string& envelopeId = found[transactionId];
            if (envelopeId.empty()) envelopeId = record->envelopeId.value_or("");
        }
    }
}

bool isUnnamed(const std::pair<const std::string, std::string>& entry) { return entry.second.empty(); }

std::string joinedByCommas(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts)
        joined += (joined.empty() ? "" : ",") + text;
    return joined;
}

class ServiceEnvelopeUploader final : public EnvelopeUploader {
  public:
    void upload(std::shared_ptr<NVESEnvelopeDefinition> envelope, Completion completion) override {
        NVMApi::createOfflineEnvelopeWithEnvelopeDefinition(
            *envelope,
            [completion = std::move(completion)](const std::shared_ptr<NVESEnvelopeSummary>& summary,
                                                 const std::optional<NVMError>& error) {
                completion(answerOf(summary.get(), error));
            });
    }

    void lookUp(const std::vector<std::string>& transactionIds, LookupCompletion completion) override {
        NVESEnvelopesApi_ListStatusChangesOptions options;
        options.transactionIds = joinedByCommas(transactionIds);
        NVMApi::listStatusChangesWithOptions(
            options, [completion = std::move(completion),
                      asked = transactionIds](const std::shared_ptr<NVESEnvelopesInformation>& information,
                                              const std::optional<NVMError>& error) {
                if (error) return completion(*error);
                if (!information || !isList(*information)) return completion(noList());
                std::map<std::string, std::string> found;
                addFound(found, asked, information->envelopeTransactionStatuses);
                addFound(found, asked, information->envelopes);
                // Sent again it might be there twice, removed here it might be nowhere: asked again later.
                if (std::any_of(found.begin(), found.end(), isUnnamed)) return completion(noEnvelopeId());
                completion(std::move(found));
            });
    }
};

} // namespace

std::shared_ptr<EnvelopeUploader> EnvelopeUploader::service() {
    static const auto uploader = std::make_shared<ServiceEnvelopeUploader>();
    return uploader;
}

} // namespace norvane
