#include "sandbox/Operations.h"
#include "sandbox/Text.h"

namespace norvane::sandbox {

namespace {

Answer serviceInformation(const Call& call) {
    const Json version = Json::object({{"version", "v2"}, {"versionUrl", call.operations.url + "/v2"}});
    return jsonAnswer(Json::object({{"buildVersion", "sandbox"}, {"serviceVersions", Json::Array{version}}}));
}

Answer resources(const Call&) {
    Json::Array list;
    for (const char* name : {"accounts", "diagnostics", "login_information"})
        list.push_back(Json::object({{"name", name}}));
    return jsonAnswer(Json::object({{"resources", std::move(list)}}));
}

Answer requestLogs(const Call& call) {
    Json::Array list;
    for (const LoggedRequest& request : call.operations.log.all())
        list.push_back(Json::object({{"requestLogId", std::to_string(request.number)},
                                     {"status", std::to_string(request.status)},
                                     {"description", request.method + " " + request.path}}));
    return pageAnswer(call.request, "apiRequestLogs", list, "/diagnostics/request_logs");
}

/// The request line alone: what proves who asks is not told on.
Answer requestLog(const Call& call) {
    for (const LoggedRequest& request : call.operations.log.all()) {
        if (std::to_string(request.number) != call["requestLogId"]) continue;
        Answer answer;
        answer.contentType = "text/plain; charset=utf-8";
        answer.body = request.method + " " + request.target + "\r\n";
        return answer;
    }
    return errorAnswer(404, "RESOURCE_NOT_FOUND", "No request of this id is logged.");
}

Answer forgetRequestLogs(const Call& call) {
    call.operations.log.clear();
    return jsonAnswer(Json::Object());
}

/// Requests are logged in any case; what is set here is kept and shown again.
Answer diagnosticsSettings(const Call& call) {
    const Json initial = Json::object({{"apiRequestLogging", "true"}, {"apiRequestLogMaxEntries", "10000"}});
    Json body = Json::Object();
    if (call.request.method == "PUT")
        if (auto refusal = readBody(call.request, body)) return *refusal;
    return call.operations.details.change(call.detailFile(), "diagnostics", initial, [&](Json& kept) {
        for (const auto& [key, value] : body.members())
            kept.set(key, value);
        return jsonAnswer(kept);
    });
}

constexpr Route kDiagnosticsRoutes[] = {
    {"GET", "/service_information", serviceInformation},
    {"GET", "/v2", resources},
    {"GET", "/v2/diagnostics/request_logs", requestLogs},
    {"DELETE", "/v2/diagnostics/request_logs", forgetRequestLogs},
    {"GET", "/v2/diagnostics/request_logs/{requestLogId}", requestLog},
    {"GET", "/v2/diagnostics/settings", diagnosticsSettings},
    {"PUT", "/v2/diagnostics/settings", diagnosticsSettings},
};

} // namespace

void addDiagnosticsOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kDiagnosticsRoutes);
}

} // namespace norvane::sandbox
