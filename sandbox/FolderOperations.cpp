#include "sandbox/EnvelopeCheck.h"
#include "sandbox/Operations.h"
#include "sandbox/Template.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"

#include <set>

namespace norvane::sandbox {

namespace {

constexpr const char* kDrafts = "Drafts";
constexpr const char* kSent = "Sent Items";
constexpr const char* kEnvelopeFolders[] = {kDrafts, "Inbox", kSent, "Recycle Bin"};

std::set<std::string> templateFolders(const Call& call) {
    std::set<std::string> names;
    for (const auto& source : call.operations.templates.all())
        names.insert(source->plan.folderName);
    return names;
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
Answer folders(const Call& call) {
    const Credentials& user = call.operations.credentials;
    Json::Array list;
    if (call.request.queryValue("template") != "only")
        for (const char* name : kEnvelopeFolders)
            list.push_back(folderJson(user, name, name));
    for (const std::string& name : templateFolders(call))
        list.push_back(folderJson(user, name, "template"));
    return pageAnswer(call.request, "folders", list, "/folders");
}

/// Where an envelope was moved to, or else where it lies by itself.
std::string folderOf(const Operations& operations, const ReceivedEnvelope& envelope) {
    const Json details = operations.details.read(envelope.folder / "details.json");
    const std::string& moved = details.text("folderId");
    return moved.empty() ? folderIdOf(envelope.status == "created" ? kDrafts : kSent) : moved;
}

Json itemJson(const Credentials& user, const ReceivedEnvelope& envelope) {
    return Json::object({{"ownerName", user.userName},
                         {"envelopeId", envelope.envelopeId},
                         {"envelopeUri", "/envelopes/" + envelope.envelopeId},
                         {"status", envelope.status},
                         {"senderName", user.userName},
                         {"senderEmail", user.email},
                         {"createdDateTime", envelope.statusDateTime},
                         {"subject", envelope.emailSubject}});
}

Answer unknownFolder() {
    return errorAnswer(404, "FOLDER_NOT_FOUND", "The account has no folder of this id.");
}

Answer folderItems(const Call& call) {
    const std::string& id = call["folderId"];
    const Credentials& user = call.operations.credentials;
    Json::Array items;
    bool known = false;
    for (const char* name : kEnvelopeFolders)
        known = known || folderIdOf(name) == id;
    for (const ReceivedEnvelope& envelope : call.operations.envelopes.all())
        if (folderOf(call.operations, envelope) == id) items.push_back(itemJson(user, envelope));
    for (const auto& source : call.operations.templates.all()) {
        const TemplatePlan& plan = source->plan;
        if (folderIdOf(plan.folderName) != id) continue;
        known = true;
        items.push_back(Json::object({{"ownerName", user.userName},
                                      {"templateId", plan.templateId},
                                      {"name", plan.name},
                                      {"description", plan.description},
                                      {"uri", "/templates/" + plan.templateId}}));
    }
    if (!known) return unknownFolder();
    return pageAnswer(call.request, "folderItems", items, "/folders/" + id);
}

/// Moves envelopes into a folder: all of them or, when one is unknown, none.
Answer moveEnvelopes(const Call& call) {
    const std::string& id = call["folderId"];
    for (const std::string& name : templateFolders(call))
        if (folderIdOf(name) == id)
            return errorAnswer(403, "FOLDER_NOT_ALLOWED", "A folder of templates takes no envelopes.");
    bool known = false;
    for (const char* name : kEnvelopeFolders)
        known = known || folderIdOf(name) == id;
    if (!known) return unknownFolder();
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    std::vector<ReceivedEnvelope> moved;
    for (const Json& envelopeId : body.array("envelopeIds")) {
        const auto envelope = call.operations.envelopes.find(envelopeId.asText());
        if (!envelope)
            return errorAnswer(404, "ENVELOPE_DOES_NOT_EXIST", "The account has no envelope of this id.");
        moved.push_back(*envelope);
    }
    if (moved.empty()) return malformed("envelopeIds is missing or empty.");
    for (const ReceivedEnvelope& envelope : moved)
        call.operations.details.change(envelope.folder / "details.json", "folderId", {}, [&](Json& kept) {
            kept = id;
            return Answer();
        });
    return folderItems(call);
}

bool awaitsUser(const Call& call, const ReceivedEnvelope& envelope) {
    bool awaits = false;
    forEachSigner(call.operations.envelopes.recipients(envelope.envelopeId), [&](const Json& signer) {
        const std::string& mail = signer.text(signer.text("hostEmail").empty() ? "email" : "hostEmail");
        const bool isUser = equalsIgnoringCase(mail, call.operations.credentials.email);
        awaits = awaits || (isUser && signer.text("signedDateTime").empty());
    });
    return awaits;
}

Answer searchFolder(const Call& call) {
    static const std::set<std::string> names{"drafts", "completed", "out_for_signature",
                                             "awaiting_my_signature"};
    const std::string& name = call["searchFolderId"];
    if (!names.contains(name)) return unknownFolder();
    Json::Array items;
    for (const ReceivedEnvelope& envelope : call.operations.envelopes.all()) {
        const std::string status = name == "drafts" ? "created" : name == "completed" ? "completed" : "sent";
        if (envelope.status != status) continue;
        if (name == "awaiting_my_signature" && !awaitsUser(call, envelope)) continue;
        items.push_back(itemJson(call.operations.credentials, envelope));
    }
    return pageAnswer(call.request, "folderItems", items, "/search_folders/" + name);
}

constexpr Route kFolderRoutes[] = {
    {"GET", "/folders", folders},
    {"GET", "/folders/{folderId}", folderItems},
    {"PUT", "/folders/{folderId}", moveEnvelopes},
    {"GET", "/search_folders/{searchFolderId}", searchFolder},
};

} // namespace

void addFolderOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kFolderRoutes);
}

} // namespace norvane::sandbox
