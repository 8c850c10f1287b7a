#pragma once

#include "sandbox/Credentials.h"
#include "sandbox/DetailStore.h"
#include "sandbox/EnvelopeStore.h"
#include "sandbox/FaultPlan.h"
#include "sandbox/Json.h"
#include "sandbox/RequestLog.h"
#include "sandbox/Router.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace norvane::sandbox {

class TemplateStore;
struct Template;

/// What the operations work on; outlives the router.
struct Operations {
    Credentials credentials;
    EnvelopeStore& envelopes;
    FaultPlan& faults;
    RequestLog& log;
    DetailStore& details;
    TemplateStore& templates;
    std::filesystem::path folder; ///< of all data
    std::string url;              ///< of the service, without a slash at its end; known once it listens
};

/// One request on its way to its handler. What its path names has been found.
struct Call {
    const Operations& operations;
    const Request& request;
    const PathParameters& parameters;
    std::optional<ReceivedEnvelope> envelope{}; ///< of "{envelopeId}"
    std::shared_ptr<const Template> source{};   ///< of "{templateId}"

    /// The value of a path's braces, which must be there.
    const std::string& operator[](std::string_view parameter) const;
    /// Where the details of the envelope, of the template or else of the account are kept.
    std::filesystem::path detailFile() const;
};
using Handler = Answer (*)(const Call&);

/// One operation. A path that begins with "/v2" or "/service" stands alone; others lie below the account.
struct Route {
    const char* method;
    const char* path;
    Handler handler;
};

/// Adds a family's table. An envelope, template or user that is not there is answered with 404, and a change
/// to an envelope that is completed or voided with 403, before a handler is called.
void addRoutes(Router& router, const Operations& operations, std::span<const Route> routes);

// Each adds its family of operations to the router. Sign-in, the account, its users and their settings:
void addAccountOperations(Router& router, const Operations& operations);
void addFolderOperations(Router& router, const Operations& operations);
void addTemplateOperations(Router& router, const Operations& operations);
/// Which templates an envelope was made of, and applying further ones to a draft.
void addAppliedTemplates(Router& router, const Operations& operations);
/// Making, listing and changing envelopes.
void addEnvelopeOperations(Router& router, const Operations& operations);
/// Documents of envelopes and templates, and their fields.
void addDocumentOperations(Router& router, const Operations& operations);
/// The pages of documents.
void addPageOperations(Router& router, const Operations& operations);
/// Custom fields, notification and lock of envelopes and templates.
void addDetailOperations(Router& router, const Operations& operations);
/// Recipients of an envelope, their images and views.
void addRecipientOperations(Router& router, const Operations& operations);
/// Tabs of recipients, and the account's own tab definitions.
void addTabOperations(Router& router, const Operations& operations);
/// The service's versions, and the log of requests.
void addDiagnosticsOperations(Router& router, const Operations& operations);
/// Faults, requests and received envelopes under /sandbox, for tests.
void addAdministration(Router& router, const Operations& operations);

/// Where what was changed beside a template is kept.
std::filesystem::path templateDetailFile(const Operations& operations, const std::string& templateId);

Answer createEnvelope(const Call& call);
/// Notes that the documents of an envelope came from a template.
void noteTemplate(const Operations& operations, const std::filesystem::path& envelopeFolder,
                  const Template& source, const std::vector<std::string>& documentIds);

/// The user as "owner" and the like.
Json ownerJson(const Credentials& credentials);
Answer jsonAnswer(const Json& json, int status = 200);
Answer malformed(const std::string& why); ///< 400, INVALID_REQUEST_BODY
/// The recipients of the envelope or the template, as they stand now.
Json recipientsOf(const Call& call);
/// Changes them; an answer of 400 and up leaves them as they were.
Answer changeRecipients(const Call& call, const std::function<Answer(Json& recipients)>& change);
Answer unknownRecipient();
void recountRecipients(Json& recipients);
/// The recipient of any kind; null when there is none.
Json* findRecipient(Json& recipients, std::string_view recipientId);
/// Reads an object, whose scalars travel as they should, out of the body; else the answer that refuses it.
std::optional<Answer> readBody(const Request& request, Json& body);

/// Changes the list `holder[list]` by the request's method: POST adds what is new, under keys of its own
/// where none are given, PUT sets members of what is there, DELETE removes it. `given` becomes what the
/// answer shows. An answer refuses an unknown or repeated key, or one that is missing.
std::optional<Answer> changeList(Json& holder, const std::string& list, Json::Array& given,
                                 const std::string& key, const std::string& method);

/// The "start_position" and "count" of a listing.
struct Paging {
    std::size_t start = 0;
    std::size_t count = 0;
    std::string error; ///< empty when the parameters were understood
};
Paging pagingOf(const Request& request);
/// Adds "resultSetSize", "startPosition", "endPosition", "totalSetSize", "nextUri" and "previousUri".
void addPaging(Json& json, const Paging& paging, std::size_t total, const std::string& uri);
/// The part of all entries that the request asks for, under `list`.
Answer pageAnswer(const Request& request, const std::string& list, const Json::Array& all,
                  const std::string& uri);

} // namespace norvane::sandbox
