#pragma once

#include <norvane/platform/Date.h>
#include <norvane/platform/HttpSession.h>

#include <string>

namespace norvane {

/// A response as it is kept, with the times that its age is reckoned from.
struct CachedResponse {
    HttpResponse response;
    Date requested;
    Date received;
};

// The rules of RFC 9111 for a cache of one user. No freshness is guessed: a response without a lifetime is
// asked after each time.

/// Whether the cache has a say in this request: a GET without a body that brings no cache rules of its own.
bool isCacheable(const HttpRequest& request);
/// Whether the response may be kept and is worth it.
bool isStorable(const HttpResponse& response);
/// Whether the response may be used without asking.
bool isFresh(const CachedResponse& cached, Date now);
/// The same request, asking only for what changed since.
HttpRequest revalidating(HttpRequest request, const CachedResponse& cached);
/// What is kept after the service answered 304.
CachedResponse refreshed(CachedResponse cached, const HttpResponse& notModified, Date requested,
                         Date received);
/// Names the response that a request asks for. All its headers are part of it, so that an answer is never
/// given to a request that varies in any way, least of all in its credentials. Begins with `cacheKeyOfUrl`.
std::string cacheKey(const HttpRequest& request);
std::string cacheKeyOfUrl(const Url& url);

} // namespace norvane
