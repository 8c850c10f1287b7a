#include "tests/sandbox/Client.h"

#include <curl/curl.h>

namespace norvane::sandbox {

struct Client::Handle {
    CURL* curl = curl_easy_init();
    ~Handle() { curl_easy_cleanup(curl); }
};

namespace {

std::size_t append(char* bytes, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, size * count);
    return size * count;
}

} // namespace

Client::Client(const SandboxService& service)
    : service_(service)
    , authority_(service.caFile().string())
    , handle_(std::make_unique<Handle>()) {}

Client::~Client() = default;

std::string Client::authentication(const std::string& user, const std::string& password,
                                   const std::string& key) {
    return R"({"Username":")" + user + R"(","Password":")" + password + R"(","IntegratorKey":")" + key +
           "\"}";
}

Reply Client::send(const std::string& method, const std::string& path, const std::string& body,
                   const std::string& contentType) {
    const Credentials& user = service_.credentials();
    Headers headers{
        {"X-Norvane-Authentication", authentication(user.userId, user.apiPassword, user.integratorKey)}};
    if (!body.empty()) headers.emplace_back("Content-Type", contentType);
    return sendWith(headers, method, path, body);
}

Reply Client::sendWith(const Headers& headers, const std::string& method, const std::string& path,
                       const std::string& body) {
    CURL* curl = handle_->curl;
    curl_easy_reset(curl);
    Reply reply;
    curl_slist* lines = curl_slist_append(nullptr, "Expect:");
    for (const auto& [name, value] : headers)
        lines = curl_slist_append(lines, (name + ": " + value).c_str());
    const std::string account = "/v2/accounts/" + service_.credentials().accountId + "/";
    const std::string url = service_.url() + (path.starts_with('/') ? path : account + path);
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, method.c_str());
    if (!body.empty()) {
        curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    }
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, lines);
    curl_easy_setopt(curl, CURLOPT_CAINFO, authority_.c_str());
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, timeOut_);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &reply.body);
    reply.failure = curl_easy_perform(curl);
    long status = 0;
    const char* type = nullptr;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(curl, CURLINFO_CONTENT_TYPE, &type);
    reply.status = static_cast<int>(status);
    reply.contentType = type ? type : "";
    curl_slist_free_all(lines);
    return reply;
}

} // namespace norvane::sandbox
