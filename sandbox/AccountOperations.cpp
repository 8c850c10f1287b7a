#include "sandbox/Authentication.h"
#include "sandbox/Operations.h"
#include "sandbox/Template.h"

#include <set>

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

Answer signIn(const Operations& operations, const Request& request) {
    const Credentials& user = operations.credentials;
    if (auto refusal = signInRefusalOf(request, user)) return *refusal;
    Json account = Json::object({{"name", user.accountName}, {"accountId", user.accountId}});
    if (request.queryValue("include_account_id_guid") == "true")
        account.set("accountIdGuid", user.accountIdGuid);
    account.set("baseUrl", operations.url + "/v2/accounts/" + user.accountId).set("isDefault", "true");
    account.set("userName", user.userName).set("userId", user.userId).set("email", user.email);
    account.set("siteDescription", "Sandbox");
    if (request.queryValue("login_settings") == "all")
        account.set("loginAccountSettings", settingsJson(kAccountSettings))
            .set("loginUserSettings", settingsJson(kUserSettings));
    Json json = Json::object({{"loginAccounts", Json::Array{std::move(account)}}});
    if (request.queryValue("api_password") == "true") json.set("apiPassword", user.apiPassword);
    return jsonAnswer(json);
}

Answer accountInformation(const Operations& operations) {
    const Credentials& user = operations.credentials;
    return jsonAnswer(Json::object({{"accountIdGuid", user.accountIdGuid},
                                    {"accountName", user.accountName},
                                    {"planName", "Sandbox"},
                                    {"currentPlanId", "sandbox-1"},
                                    {"currencyCode", "USD"},
                                    {"canUpgrade", "false"}}));
}

Answer consumerDisclosure(const Operations& operations) {
    return jsonAnswer(Json::object({{"accountEsignId", "6c2f81d4-0a95-4e37-b6d8-19f3a7c4e502"},
                                    {"companyName", operations.credentials.accountName},
                                    {"esignAgreement", kAgreement},
                                    {"esignText", "I agree to use electronic records and signatures."}}));
}

Json folderJson(const Credentials& user, const std::string& name, const std::string& type) {
    const std::string id = folderIdOf(name);
    return Json::object({{"ownerUserName", user.userName},
                         {"ownerEmail", user.email},
                         {"ownerUserId", user.userId},
                         {"type", type},
                         {"name", name},
                         {"uri", "/folders/" + id},
                         {"folderId", id}});
}

/// Folders of templates, and of envelopes unless the query asks for "template=only".
Answer folders(const Operations& operations, const Request& request) {
    const std::string templates = request.queryValue("template");
    Json::Array list;
    if (templates != "only")
        for (const char* name : {"Drafts", "Inbox", "Sent Items", "Recycle Bin"})
            list.push_back(folderJson(operations.credentials, name, name));
    std::set<std::string> names;
    for (const Template& source : templateCatalogue())
        if (names.insert(source.plan.folderName).second)
            list.push_back(folderJson(operations.credentials, source.plan.folderName, "template"));
    return jsonAnswer(Json::object({{"folders", std::move(list)}}));
}

} // namespace

void addAccountOperations(Router& router, const Operations& operations) {
    const std::string account = "/v2/accounts/{accountId}";
    router.add("GET", "/v2/login_information",
               [&](const Request& request, const PathParameters&) { return signIn(operations, request); });
    router.add("GET", account,
               [&](const Request&, const PathParameters&) { return accountInformation(operations); });
    router.add("GET", account + "/settings", [](const Request&, const PathParameters&) {
        return jsonAnswer(Json::object({{"accountSettings", settingsJson(kAccountSettings)}}));
    });
    router.add("GET", account + "/users/{userId}/settings",
               [&](const Request&, const PathParameters& parameters) {
                   if (parameters.find("userId")->second != operations.credentials.userId)
                       return errorAnswer(404, "USER_NOT_FOUND", "The user does not belong to the account.");
                   return jsonAnswer(Json::object({{"userSettings", settingsJson(kUserSettings)}}));
               });
    router.add("GET", account + "/consumer_disclosure",
               [&](const Request&, const PathParameters&) { return consumerDisclosure(operations); });
    router.add("GET", account + "/folders",
               [&](const Request& request, const PathParameters&) { return folders(operations, request); });
}

} // namespace norvane::sandbox
