#include "sandbox/Authentication.h"
#include "sandbox/Operations.h"

namespace norvane::sandbox {

namespace {

struct Setting {
    const char* name;
    const char* value;
};

constexpr Setting kAccountSettings[] = {
    {"inSessionEnabled", "true"},
    {"allowOfflineSigning", "true"},
    {"allowInPerson", "true"},
    {"canSelfBrandSend", "false"},
    {"enableSequentialSigningInterface", "true"},
    {"signDateFormat", "M/d/yyyy"},
    {"signTimeFormat", "h:mm tt"},
    {"consumerDisclosureRequired", "true"},
    {"allowSignerReassign", "true"},
    {"envelopeExpireAfterDays", "120"},
};
constexpr Setting kUserSettings[] = {
    {"selfSignedRecipientEmailDocument", "include_link"},
    {"canManageTemplates", "none"},
    {"canSendEnvelope", "true"},
    {"locale", "en"},
};

constexpr const char* kAgreement = "<h1>Electronic records and signatures</h1><p>Harbour &amp; Finch (we, "
                                   "us) sends you documents and collects "
                                   "your signature electronically. By agreeing you confirm that you can open "
                                   "the documents on your device and that "
                                   "you accept them, and your signature on them, in electronic "
                                   "form.</p><p>You may ask for paper copies, and you may "
                                   "withdraw this consent before you sign, by declining the document.</p>";

template <std::size_t N>
Json settingsJson(const Setting (&settings)[N]) {
    Json::Array list;
    for (const Setting& setting : settings)
        list.push_back(Json::object({{"name", setting.name}, {"value", setting.value}}));
    return list;
}

template <std::size_t N>
Json settingsOf(const Operations& operations, const char* list, const Setting (&initial)[N]) {
    const Json details = operations.details.read(operations.folder / "details.json");
    const Json* changed = details.find(list);
    return changed ? *changed : settingsJson(initial);
}

Answer signIn(const Call& call) {
    const Request& request = call.request;
    const Operations& operations = call.operations;
    const Credentials& user = operations.credentials;
    if (auto refusal = signInRefusalOf(request, user)) return *refusal;
    Json account = Json::object({{"name", user.accountName}, {"accountId", user.accountId}});
    if (request.queryValue("include_account_id_guid") == "true")
        account.set("accountIdGuid", user.accountIdGuid);
    account.set("baseUrl", operations.url + "/v2/accounts/" + user.accountId).set("isDefault", "true");
    account.set("userName", user.userName).set("userId", user.userId).set("email", user.email);
    account.set("siteDescription", "Sandbox");
    if (request.queryValue("login_settings") == "all")
        account.set("loginAccountSettings", settingsOf(operations, "accountSettings", kAccountSettings))
            .set("loginUserSettings", settingsOf(operations, "userSettings", kUserSettings));
    Json json = Json::object({{"loginAccounts", Json::Array{std::move(account)}}});
    if (request.queryValue("api_password") == "true") json.set("apiPassword", user.apiPassword);
    return jsonAnswer(json);
}

Answer accountInformation(const Call& call) {
    const Credentials& user = call.operations.credentials;
    return jsonAnswer(Json::object({{"accountIdGuid", user.accountIdGuid},
                                    {"accountName", user.accountName},
                                    {"planName", "Sandbox"},
                                    {"currentPlanId", "sandbox-1"},
                                    {"currencyCode", "USD"},
                                    {"canUpgrade", "false"}}));
}

Answer consumerDisclosure(const Call& call) {
    return jsonAnswer(Json::object({{"accountEsignId", "6c2f81d4-0a95-4e37-b6d8-19f3a7c4e502"},
                                    {"companyName", call.operations.credentials.accountName},
                                    {"esignAgreement", kAgreement},
                                    {"esignText", "I agree to use electronic records and signatures."}}));
}

/// Shows the settings, or sets those that the body names; there are no others.
template <std::size_t N>
Answer settings(const Call& call, const char* list, const Setting (&initial)[N]) {
    const Operations& operations = call.operations;
    if (call.request.method == "GET")
        return jsonAnswer(Json::object({{list, settingsOf(operations, list, initial)}}));
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    return operations.details.change(call.detailFile(), list, settingsJson(initial), [&](Json& kept) {
        Json holder = Json::object({{list, kept}});
        Json::Array given = body.array(list);
        if (auto refusal = changeList(holder, list, given, "name", "PUT")) return *refusal;
        kept = *holder.find(list);
        return jsonAnswer(holder);
    });
}

Answer accountSettings(const Call& call) { return settings(call, "accountSettings", kAccountSettings); }
Answer userSettings(const Call& call) { return settings(call, "userSettings", kUserSettings); }

Answer accountCustomFields(const Call&) {
    return jsonAnswer(
        Json::object({{"textCustomFields", Json::Array()}, {"listCustomFields", Json::Array()}}));
}

constexpr const char* kShared = "sharedAccess";

Answer sharedAccess(const Call& call) {
    const Json details = call.operations.details.read(call.detailFile());
    return pageAnswer(call.request, kShared, details.array(kShared), "/shared_access");
}

/// Sets what users share: {"sharedAccess": [{"user": {"userId"}, "templates": [...], ...}]}.
Answer updateSharedAccess(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    const Json::Array given = body.array(kShared);
    if (given.empty()) return malformed("sharedAccess is missing or empty.");
    const auto userOf = [](const Json& entry) {
        const Json* user = entry.find("user");
        return user ? user->text("userId") : std::string();
    };
    for (const Json& entry : given)
        if (userOf(entry) != call.operations.credentials.userId)
            return errorAnswer(404, "USER_NOT_FOUND", "The user does not belong to the account.");
    return call.operations.details.change(call.detailFile(), kShared, Json::Array(), [&](Json& kept) {
        for (const Json& entry : given) {
            std::erase_if(*kept.mutableItems(),
                          [&](const Json& old) { return userOf(old) == userOf(entry); });
            kept.push(entry);
        }
        return jsonAnswer(Json::object({{kShared, kept}}));
    });
}

Answer unsupportedFileTypes(const Call&) {
    Json::Array types;
    for (const char* extension : {"exe", "bat", "dll", "zip"})
        types.push_back(
            Json::object({{"fileExtension", extension}, {"mimeType", "application/octet-stream"}}));
    return jsonAnswer(Json::object({{"fileTypes", std::move(types)}}));
}

Answer users(const Call& call) {
    return pageAnswer(call.request, "users", {ownerJson(call.operations.credentials)}, "/users");
}

Answer user(const Call& call) { return jsonAnswer(ownerJson(call.operations.credentials)); }

constexpr Route kAccountRoutes[] = {
    {"GET", "/v2/login_information", signIn},
    {"GET", "", accountInformation},
    {"GET", "/settings", accountSettings},
    {"PUT", "/settings", accountSettings},
    {"GET", "/consumer_disclosure", consumerDisclosure},
    {"GET", "/envelopes/{envelopeId}/recipients/{recipientId}/consumer_disclosure", consumerDisclosure},
    {"GET", "/custom_fields", accountCustomFields},
    {"GET", "/shared_access", sharedAccess},
    {"PUT", "/shared_access", updateSharedAccess},
    {"GET", "/unsupported_file_types", unsupportedFileTypes},
    {"GET", "/users", users},
    {"GET", "/users/{userId}", user},
    {"GET", "/users/{userId}/settings", userSettings},
    {"PUT", "/users/{userId}/settings", userSettings},
};

} // namespace

void addAccountOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kAccountRoutes);
}

} // namespace norvane::sandbox
