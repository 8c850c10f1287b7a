#include "sandbox/Operations.h"
#include "sandbox/Text.h"

#include <algorithm>
#include <array>

namespace norvane::sandbox {

namespace {

/// Headers that prove who asks are not told on.
Json headersJson(const Headers& headers) {
    static constexpr std::array<std::string_view, 2> kSecret{"Authorization", "X-Norvane-Authentication"};
    Json::Array list;
    for (const auto& header : headers) {
        const bool secret = std::any_of(kSecret.begin(), kSecret.end(), [&](std::string_view key) {
            return equalsIgnoringCase(key, header.first);
        });
        list.push_back(Json::object(
            {{"name", header.first}, {"value", secret ? std::string("-redacted-") : header.second}}));
    }
    return list;
}

Json requestsJson(const RequestLog& log) {
    Json::Array list;
    for (const LoggedRequest& request : log.all())
        list.push_back(Json::object({{"number", static_cast<std::int64_t>(request.number)},
                                     {"method", request.method},
                                     {"target", request.target},
                                     {"headers", headersJson(request.headers)},
                                     {"bodySize", static_cast<std::int64_t>(request.bodySize)},
                                     {"fault", request.fault},
                                     {"finished", request.finished},
                                     {"status", request.status}}));
    return Json::object({{"requests", std::move(list)}});
}

Json faultsJson(const FaultPlan& faults) {
    Json::Array list;
    for (const Fault& fault : faults.remaining())
        list.push_back(faultJson(fault));
    return Json::object({{"faults", std::move(list)}});
}

/// One fault, or a list of them: all are taken or none.
Answer addFaults(FaultPlan& plan, const Request& request) {
    const JsonResult parsed = parseJson(request.body);
    if (!parsed.ok()) return errorAnswer(400, "INVALID_FAULT", parsed.error);
    const Json::Array single{parsed.value};
    std::vector<Fault> faults;
    for (const Json& json : parsed.value.isArray() ? parsed.value.items() : single) {
        const FaultResult fault = faultFromJson(json);
        if (!fault.ok()) return errorAnswer(400, "INVALID_FAULT", fault.error);
        faults.push_back(fault.fault);
    }
    for (Fault& fault : faults)
        plan.add(std::move(fault));
    return jsonAnswer(faultsJson(plan), 201);
}

Json envelopesJson(const EnvelopeStore& store) {
    Json::Array list;
    for (const ReceivedEnvelope& envelope : store.all()) {
        Json::Array warnings;
        for (const std::string& warning : envelope.warnings)
            warnings.emplace_back(warning);
        list.push_back(Json::object({{"envelopeId", envelope.envelopeId},
                                     {"transactionId", envelope.transactionId},
                                     {"status", envelope.status},
                                     {"multipart", envelope.multipart},
                                     {"documents", static_cast<std::int64_t>(envelope.documents.size())},
                                     {"images", static_cast<std::int64_t>(envelope.images.size())},
                                     {"warnings", std::move(warnings)},
                                     {"folder", envelope.folder.string()}}));
    }
    return Json::object({{"envelopes", std::move(list)}});
}

} // namespace

void addAdministration(Router& router, const Operations& operations) {
    const auto add = [&](const char* method, const char* path,
                         std::function<Answer(const Request&)> operation) {
        router.add(method, path,
                   [operation = std::move(operation)](const Request& request, const PathParameters&) {
                       return operation(request);
                   });
    };
    add("GET", "/sandbox/faults", [&](const Request&) { return jsonAnswer(faultsJson(operations.faults)); });
    add("POST", "/sandbox/faults",
        [&](const Request& request) { return addFaults(operations.faults, request); });
    add("DELETE", "/sandbox/faults", [&](const Request&) {
        operations.faults.clear();
        return jsonAnswer(faultsJson(operations.faults));
    });
    add("GET", "/sandbox/requests", [&](const Request&) { return jsonAnswer(requestsJson(operations.log)); });
    add("DELETE", "/sandbox/requests", [&](const Request&) {
        operations.log.clear();
        return jsonAnswer(requestsJson(operations.log));
    });
    add("GET", "/sandbox/envelopes",
        [&](const Request&) { return jsonAnswer(envelopesJson(operations.envelopes)); });
}

} // namespace norvane::sandbox
