#include "sandbox/SandboxService.h"

#include "sandbox/Authentication.h"
#include "sandbox/Authority.h"
#include "sandbox/EnvelopeStore.h"
#include "sandbox/FaultPlan.h"
#include "sandbox/HttpServer.h"
#include "sandbox/Operations.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/TemplateStore.h"
#include "sandbox/Text.h"

#include <algorithm>
#include <stdexcept>

namespace norvane::sandbox {

namespace {

bool isAdministration(const std::string& path) { return path == "/sandbox" || path.starts_with("/sandbox/"); }

std::string urlOf(const std::string& host, std::uint16_t port) {
    const bool six = host.find(':') != std::string::npos;
    return "https://" + (six ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

} // namespace

class SandboxService::Running : public HttpHandler {
  public:
    explicit Running(const Options& options)
        : files_(prepareAuthority(options.dataFolder / "tls", options.host, std::chrono::system_clock::now()))
        , envelopes_(options.dataFolder / "envelopes")
        , templates_(options.dataFolder / "templates")
        , operations_{prepareCredentials(options.dataFolder / "account.json"),
                      envelopes_,
                      faults_,
                      log_,
                      details_,
                      templates_,
                      options.dataFolder,
                      {}} {
        for (const Fault& fault : options.faults)
            faults_.add(fault);
        for (auto* addFamily :
             {addAccountOperations, addFolderOperations, addTemplateOperations, addAppliedTemplates,
              addEnvelopeOperations, addDocumentOperations, addPageOperations, addDetailOperations,
              addTabOperations, addRecipientOperations, addDiagnosticsOperations, addAdministration})
            addFamily(router_, operations_);
        HttpServer::Options server{options.host, options.port, files_.chain, files_.key,
                                   options.maximumBodyBytes};
        server_ = std::make_unique<HttpServer>(server, *this);
        port_ = server_->port();
        operations_.url = urlOf(options.host, port_);
        server_->serve();
    }

    Plan begin(const Request& head) override {
        if (isAdministration(head.path)) return {};
        auto fault = faults_.take(head.method, head.path);
        const auto number = log_.begin(head, fault ? nameOf(fault->kind) : "");
        return {number, std::move(fault)};
    }

    Answer handle(const Request& request) override {
        try {
            return answer(request);
        } catch (const std::exception& problem) {
            return errorAnswer(500, "SANDBOX_FAILED", problem.what());
        }
    }

    void finished(const Plan& plan, const Request& request, std::uint64_t bodySize, int status) override {
        if (plan.number > 0) log_.end(plan.number, request.body, bodySize, status);
    }

    void stop() { server_.reset(); }

    AuthorityFiles files_;
    EnvelopeStore envelopes_;
    TemplateStore templates_;
    FaultPlan faults_;
    RequestLog log_;
    DetailStore details_;
    Operations operations_;
    std::uint16_t port_ = 0;

  private:
    Answer answer(const Request& request) const;
    std::optional<Answer> refusal(const Request& request, const PathParameters& parameters) const;

    Router router_;
    std::unique_ptr<HttpServer> server_; ///< last: its threads use everything above
};

Answer SandboxService::Running::answer(const Request& request) const {
    if (isAdministration(request.path) && !request.fromLoopback)
        return errorAnswer(403, "LOOPBACK_ONLY", "The sandbox is administered from its own machine only.");
    const Router::Match match = router_.match(request.method, request.path);
    if (match.operation) {
        if (auto refused = refusal(request, match.parameters)) return *refused;
        return (*match.operation)(request, match.parameters);
    }
    if (match.allowed.empty())
        return errorAnswer(404, "RESOURCE_NOT_FOUND", "There is nothing at this path.");
    Answer answer = errorAnswer(405, "METHOD_NOT_ALLOWED", "The path does not take this method.");
    answer.headers = {{"Allow", match.allowed}};
    return answer;
}

/// All but the service's versions need the user's proof, and those on an account the user's account; signing
/// in proves by itself.
std::optional<Answer> SandboxService::Running::refusal(const Request& request,
                                                       const PathParameters& parameters) const {
    const auto account = parameters.find("accountId");
    const bool hasAccount = account != parameters.end();
    if (!hasAccount && !request.path.starts_with("/v2/diagnostics/")) return std::nullopt;
    const Credentials& user = operations_.credentials;
    if (auto refused = refusalOf(request, user)) return refused;
    if (!hasAccount) return std::nullopt;
    if (account->second == user.accountId || equalsIgnoringCase(account->second, user.accountIdGuid))
        return std::nullopt;
    return errorAnswer(404, "ACCOUNT_NOT_FOUND", "The user has no account of this id.");
}

SandboxService::SandboxService(Options options)
    : options_(std::move(options)) {}

SandboxService::~SandboxService() { stop(); }

void SandboxService::start() {
    if (running_) throw std::runtime_error("the sandbox service has been started before");
    makePrivateFolder(options_.dataFolder);
    running_ = std::make_unique<Running>(options_);
}

void SandboxService::stop() {
    if (running_) running_->stop();
}

const std::string& SandboxService::url() const { return running_->operations_.url; }
std::uint16_t SandboxService::port() const { return running_->port_; }
const std::filesystem::path& SandboxService::caFile() const { return running_->files_.authority; }
const Credentials& SandboxService::credentials() const { return running_->operations_.credentials; }

void SandboxService::addFault(Fault fault) { running_->faults_.add(std::move(fault)); }

void SandboxService::addFault(const std::string& text) {
    FaultResult parsed = parseFault(text);
    if (!parsed.ok()) throw std::invalid_argument("fault '" + text + "': " + parsed.error);
    addFault(std::move(parsed.fault));
}

void SandboxService::clearFaults() { running_->faults_.clear(); }

std::vector<LoggedRequest> SandboxService::requests() const { return running_->log_.all(); }

bool SandboxService::waitForRequests(std::size_t count, std::chrono::milliseconds time) const {
    return running_->log_.waitUntil(
        [count](const std::deque<LoggedRequest>& requests) {
            const auto finished =
                std::count_if(requests.begin(), requests.end(),
                              [](const LoggedRequest& request) { return request.finished; });
            return static_cast<std::size_t>(finished) >= count;
        },
        time);
}

std::vector<ReceivedEnvelope> SandboxService::receivedEnvelopes() const { return running_->envelopes_.all(); }

void SandboxService::forgetEnvelopes() { running_->envelopes_.forgetAll(); }

} // namespace norvane::sandbox
