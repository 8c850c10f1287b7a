#include "sandbox/Operations.h"

#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {
constexpr std::size_t kMostEntries = 1'000;
constexpr std::size_t kUsualEntries = 100;

/// Finds the envelope, the template and the user that the path names.
std::optional<Answer> resolve(Call& call) {
    const auto named = [&](const char* parameter) {
        const auto found = call.parameters.find(parameter);
        return found == call.parameters.end() ? nullptr : &found->second;
    };
    if (const std::string* id = named("userId"); id && *id != call.operations.credentials.userId)
        return errorAnswer(404, "USER_NOT_FOUND", "The user does not belong to the account.");
    if (const std::string* id = named("templateId")) {
        if (!isUuid(*id))
            return errorAnswer(400, "INVALID_REQUEST_PARAMETER", "The template id is not a UUID.");
        call.source = call.operations.templates.find(*id);
        if (!call.source)
            return errorAnswer(404, "TEMPLATE_NOT_FOUND", "The account has no template of this id.");
    }
    if (const std::string* id = named("envelopeId")) {
        call.envelope = call.operations.envelopes.find(*id);
        if (!call.envelope)
            return errorAnswer(404, "ENVELOPE_DOES_NOT_EXIST", "The account has no envelope of this id.");
        const std::string& status = call.envelope->status;
        if (call.request.method != "GET" && (status == "completed" || status == "voided"))
            return errorAnswer(403, "ENVELOPE_IS_CLOSED",
                               "The envelope is " + status + " and stays as it is.");
    }
    return std::nullopt;
}

const Json* entryOf(const Json& holder, const std::string& list, const std::string& key,
                    const std::string& value) {
    for (const Json& entry : holder.array(list))
        if (entry.text(key) == value) return &entry;
    return nullptr;
}
} // namespace

const std::string& Call::operator[](std::string_view parameter) const {
    return parameters.find(parameter)->second;
}

std::filesystem::path Call::detailFile() const {
    if (envelope) return envelope->folder / "details.json";
    if (source) return templateDetailFile(operations, source->plan.templateId);
    return operations.folder / "details.json";
}

std::filesystem::path templateDetailFile(const Operations& operations, const std::string& templateId) {
    return operations.folder / "templates" / (templateId + ".json");
}

void addRoutes(Router& router, const Operations& operations, std::span<const Route> routes) {
    for (const Route& route : routes) {
        const std::string path = route.path;
        const bool isAlone = path.starts_with("/v2") || path.starts_with("/service");
        router.add(
            route.method, isAlone ? path : "/v2/accounts/{accountId}" + path,
            [&operations, handler = route.handler](const Request& request, const PathParameters& parameters) {
                Call call{operations, request, parameters};
                if (auto refusal = resolve(call)) return *refusal;
                return handler(call);
            });
    }
}

Json ownerJson(const Credentials& credentials) {
    return Json::object({{"userName", credentials.userName},
                         {"email", credentials.email},
                         {"userId", credentials.userId},
                         {"userType", "CompanyUser"},
                         {"userStatus", "Active"},
                         {"uri", "/users/" + credentials.userId}});
}

Answer jsonAnswer(const Json& json, int status) {
    Answer answer;
    answer.status = status;
    answer.body = json.write();
    return answer;
}

Answer malformed(const std::string& why) { return errorAnswer(400, "INVALID_REQUEST_BODY", why); }

Json recipientsOf(const Call& call) {
    if (call.envelope) return call.operations.envelopes.recipients(call.envelope->envelopeId);
    const Json details = call.operations.details.read(call.detailFile());
    const Json* changed = details.find("recipients");
    if (changed) return *changed;
    return call.source ? call.source->recipients : Json();
}

Answer changeRecipients(const Call& call, const std::function<Answer(Json& recipients)>& change) {
    if (call.envelope) return call.operations.envelopes.changeRecipients(call.envelope->envelopeId, change);
    return call.operations.details.change(call.detailFile(), "recipients", call.source->recipients, change);
}

Answer unknownRecipient() {
    return errorAnswer(404, "RECIPIENT_NOT_IN_ENVELOPE", "There is no recipient of this id.");
}

void recountRecipients(Json& recipients) {
    std::size_t count = 0;
    for (const auto& [list, entries] : recipients.members())
        count += entries.items().size();
    recipients.set("recipientCount", std::to_string(count));
}

Json* findRecipient(Json& recipients, std::string_view recipientId) {
    for (const auto& [list, entries] : recipients.members()) {
        Json::Array* items = recipients.find(list)->mutableItems();
        if (!items) continue;
        for (Json& recipient : *items)
            if (recipient.text("recipientId") == recipientId) return &recipient;
    }
    return nullptr;
}

std::optional<Answer> readBody(const Request& request, Json& body) {
    JsonResult parsed = parseJson(request.body);
    if (!parsed.ok() || !parsed.value.isObject())
        return malformed("The body is not a JSON object. " + parsed.error);
    body = std::move(parsed.value);
    if (const auto problem = checkScalars(body); !problem.empty()) return malformed(problem);
    return std::nullopt;
}

namespace {

Answer isMissing(const std::string& key, const std::string& list) {
    return malformed(key + " is missing in " + list + ".");
}

Answer isTaken(const std::string& key, const std::string& value) {
    return malformed(key + " is taken: " + value);
}

Answer isUnknown(const std::string& key, const std::string& value) {
    return errorAnswer(404, "RESOURCE_NOT_FOUND", "There is no " + key + " " + value);
}

} // namespace

std::optional<Answer> changeList(Json& holder, const std::string& list, Json::Array& given,
                                 const std::string& key, const std::string& method) {
    if (!holder.find(list)) holder.set(list, Json::Array());
    Json::Array* kept = holder.find(list)->mutableItems();
    for (Json& entry : given) {
        if (!entry.isObject() || !kept) return malformed(list + " is not a list of objects.");
        const bool adds = method == "POST";
        if (adds && entry.text(key).empty() && key != "name") entry.set(key, newUuid());
        const std::string value = entry.text(key);
        if (value.empty()) return isMissing(key, list);
        const bool isThere = entryOf(holder, list, key, value);
        if (adds && isThere) return isTaken(key, value);
        if (!adds && !isThere) return isUnknown(key, value);
        if (adds) kept->push_back(entry);
        if (method == "DELETE") std::erase_if(*kept, [&](const Json& old) { return old.text(key) == value; });
        if (method != "PUT") continue;
        for (Json& old : *kept) {
            if (old.text(key) != value) continue;
            for (const auto& [name, member] : entry.members())
                old.set(name, member);
            entry = old;
        }
    }
    return std::nullopt;
}

Paging pagingOf(const Request& request) {
    const std::string startText = request.queryValue("start_position");
    const std::string countText = request.queryValue("count");
    const auto start = startText.empty() ? std::optional(0ULL) : wholeNumber(startText);
    const auto count =
        countText.empty() ? std::optional<unsigned long long>(kUsualEntries) : wholeNumber(countText);
    if (!start || !count || *count == 0 || *count > kMostEntries)
        return {0, 0, "start_position and count must be whole numbers, count at most 1000."};
    return {static_cast<std::size_t>(*start), static_cast<std::size_t>(*count), {}};
}

void addPaging(Json& json, const Paging& paging, std::size_t total, const std::string& uri) {
    const std::size_t end = std::min(total, paging.start + std::min(paging.count, total));
    const std::size_t shown = end > paging.start ? end - paging.start : 0;
    const auto page = [&](std::size_t start) {
        return uri + "?start_position=" + std::to_string(start) + "&count=" + std::to_string(paging.count);
    };
    json.set("resultSetSize", std::to_string(shown)).set("totalSetSize", std::to_string(total));
    json.set("startPosition", std::to_string(paging.start));
    json.set("endPosition", std::to_string(shown > 0 ? end - 1 : paging.start));
    json.set("nextUri", end < total ? page(end) : "");
    json.set("previousUri",
             paging.start > 0 ? page(paging.start - std::min(paging.start, paging.count)) : "");
}

Answer pageAnswer(const Request& request, const std::string& list, const Json::Array& all,
                  const std::string& uri) {
    const Paging paging = pagingOf(request);
    if (!paging.error.empty()) return errorAnswer(400, "INVALID_REQUEST_PARAMETER", paging.error);
    Json::Array shown;
    for (std::size_t at = paging.start; at < all.size() && at - paging.start < paging.count; ++at)
        shown.push_back(all[at]);
    Json json = Json::object({{list, std::move(shown)}});
    addPaging(json, paging, all.size(), uri);
    return jsonAnswer(json);
}

} // namespace norvane::sandbox
