#pragma once

#include "sandbox/Credentials.h"
#include "sandbox/EnvelopeStore.h"
#include "sandbox/FaultPlan.h"
#include "sandbox/Json.h"
#include "sandbox/RequestLog.h"
#include "sandbox/Router.h"

#include <string>

namespace norvane::sandbox {

/// What the operations work on; outlives the router.
struct Operations {
    Credentials credentials;
    EnvelopeStore& envelopes;
    FaultPlan& faults;
    RequestLog& log;
    std::string url; ///< of the service, without a slash at its end; known once it listens
};

// Each adds its family of operations to the router. Sign-in, the account and its user:
void addAccountOperations(Router& router, const Operations& operations);
void addTemplateOperations(Router& router, const Operations& operations);
void addEnvelopeOperations(Router& router, const Operations& operations);
/// Recipients of an envelope, their tabs, images and views.
void addRecipientOperations(Router& router, const Operations& operations);
/// Faults, requests and received envelopes under /sandbox, for tests.
void addAdministration(Router& router, const Operations& operations);

/// The user as "owner" and the like.
Json ownerJson(const Credentials& credentials);
Answer jsonAnswer(const Json& json, int status = 200);
/// The "start_position" and "count" of a listing.
struct Paging {
    std::size_t start = 0;
    std::size_t count = 0;
    std::string error; ///< empty when the parameters were understood
};
Paging pagingOf(const Request& request);
/// Adds "resultSetSize", "startPosition", "endPosition", "totalSetSize", "nextUri" and "previousUri".
void addPaging(Json& json, const Paging& paging, std::size_t total, const std::string& uri);

} // namespace norvane::sandbox
