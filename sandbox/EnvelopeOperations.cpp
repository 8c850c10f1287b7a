#include "sandbox/Operations.h"
#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {

Json envelopeJson(const ReceivedEnvelope& envelope) {
    const std::string uri = "/envelopes/" + envelope.envelopeId;
    return Json::object({{"envelopeId", envelope.envelopeId},
                         {"transactionId", envelope.transactionId},
                         {"status", envelope.status},
                         {"emailSubject", envelope.emailSubject},
                         {"statusChangedDateTime", envelope.statusDateTime},
                         {"createdDateTime", envelope.statusDateTime},
                         {"envelopeUri", uri},
                         {"documentsUri", uri + "/documents"},
                         {"recipientsUri", uri + "/recipients"},
                         {"customFieldsUri", uri + "/custom_fields"},
                         {"notificationUri", uri + "/notification"}});
}

/// Whether the comma-separated list is absent or names the value, ignoring case.
bool isNamed(const std::string& list, const std::string& value) {
    const auto wanted = split(list, ',');
    return list.empty() || std::any_of(wanted.begin(), wanted.end(), [&](const std::string& name) {
               return !name.empty() && equalsIgnoringCase(name, value);
           });
}

/// What a listing is narrowed to.
struct Filter {
    std::string transactionIds, envelopeIds, statuses, from, to;

    bool takes(const ReceivedEnvelope& envelope) const {
        const std::string& changed = envelope.statusDateTime; // texts of one form: they compare as dates do
        return isNamed(transactionIds, envelope.transactionId) && isNamed(envelopeIds, envelope.envelopeId) &&
               (isNamed(statuses, envelope.status) || isNamed(statuses, "any")) &&
               (from.empty() || changed >= from) && (to.empty() || changed <= to);
    }
};

Answer list(const Call& call, const Filter& filter) {
    Json::Array shown, statuses;
    for (const ReceivedEnvelope& envelope : call.operations.envelopes.all()) {
        if (!filter.takes(envelope)) continue;
        shown.push_back(envelopeJson(envelope));
        statuses.push_back(Json::object({{"transactionId", envelope.transactionId},
                                         {"envelopeId", envelope.envelopeId},
                                         {"status", envelope.status}}));
    }
    Answer answer = pageAnswer(call.request, "envelopes", shown, "/envelopes");
    if (filter.transactionIds.empty() || answer.status != 200) return answer;
    return jsonAnswer(parseJson(answer.body).value.set("envelopeTransactionStatuses", std::move(statuses)));
}

/// The envelopes whose status changed, by the options of the query.
Answer listEnvelopes(const Call& call) {
    const auto option = [&](const char* name) { return call.request.queryValue(name); };
    const std::string status = option("status");
    return list(call,
                {option("transaction_ids"), option("envelope_ids"),
                 status.empty() ? option("from_to_status") : status, option("from_date"), option("to_date")});
}

/// The same for the ids in the body: {"envelopeIds": [...], "transactionIds": [...]}.
Answer listStatus(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    const auto joined = [&](const char* ids) {
        std::string text;
        for (const Json& id : body.array(ids))
            text.append(text.empty() ? "" : ",").append(id.asText());
        return text;
    };
    Filter filter{joined("transactionIds"), joined("envelopeIds"), {}, {}, {}};
    if (filter.transactionIds.empty() && filter.envelopeIds.empty())
        return malformed("envelopeIds and transactionIds are missing.");
    return list(call, filter);
}

Answer envelope(const Call& call) {
    return jsonAnswer(call.operations.details.read(call.detailFile(), envelopeJson(*call.envelope)));
}

/// Sends a draft, or voids what was sent: {"status": "voided", "voidedReason": "..."}.
Answer updateEnvelope(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    const std::string& from = call.envelope->status;
    const std::string& to = body.text("status");
    if (!(from == "created" && to == "sent") && !(from == "sent" && to == "voided"))
        return malformed("An envelope that is " + from + " does not become \"" + to + "\".");
    if (to == "voided") {
        if (body.text("voidedReason").empty()) return malformed("voidedReason is missing.");
        call.operations.details.change(call.detailFile(), "voidedReason", {}, [&](Json& kept) {
            kept = body.text("voidedReason");
            return Answer();
        });
    }
    call.operations.envelopes.setStatus(call.envelope->envelopeId, to);
    return jsonAnswer(Json::object({{"envelopeId", call.envelope->envelopeId}}));
}

Answer auditEvents(const Call& call) {
    const auto field = [](const char* name, const std::string& value) {
        return Json::object({{"name", name}, {"value", value}});
    };
    Json event;
    event.set("eventFields",
              Json::Array{field("logTime", call.envelope->statusDateTime),
                          field("UserName", call.operations.credentials.userName),
                          field("Action", "Registered"), field("EnvelopeStatus", call.envelope->status)});
    return jsonAnswer(Json::object({{"auditEvents", Json::Array{std::move(event)}}}));
}

constexpr Route kEnvelopeRoutes[] = {
    {"POST", "/envelopes", createEnvelope},
    {"GET", "/envelopes", listEnvelopes},
    {"PUT", "/envelopes/status", listStatus},
    {"GET", "/envelopes/{envelopeId}", envelope},
    {"PUT", "/envelopes/{envelopeId}", updateEnvelope},
    {"GET", "/envelopes/{envelopeId}/audit_events", auditEvents},
};

} // namespace

void addEnvelopeOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kEnvelopeRoutes);
}

} // namespace norvane::sandbox
