#include "sandbox/Json.h"
#include "sandbox/SandboxService.h"

#include <CLI/CLI.hpp>
#include <pthread.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using norvane::sandbox::Json;
using norvane::sandbox::parseFault;
using norvane::sandbox::SandboxService;

constexpr int kWrongUsage = 2;

constexpr const char* kDescription =
    R"(A signing service of your own, to develop and test hosts against.

It listens with HTTPS, prints one JSON line with everything a client needs
("url", "ca", "userName", "password", ...) and serves until it gets SIGINT or
SIGTERM. What it is sent is kept under the data folder, and so are its
credentials and certificates: the next start uses them again.)";

constexpr const char* kFooter = R"(
Faults
  --fault 'METHOD PATH KIND [skip=N] [nth=N] [times=N] [delay=MS] [body=TEXT]'
  METHOD may be *; in PATH * stands for one segment and ** for the rest.
  KIND is one of
    status=503       answer with this status (and body=... to the end of the text)
    portal           answer 200 with the HTML page of a captive portal
    delay=2000       wait so many milliseconds, then go on (alone, or with a kind)
    hang             read the request and never answer
    cut-request=N    reset the connection after N bytes of the request's body
    cut-answer=N     apply the request, close after N bytes of the answer
    apply-close      apply the request, reset the connection without an answer
    apply-hang       apply the request and never answer
  A fault hits once; times=N hits N times, times=0 always, nth=3 only the third.

Examples
  norvane-sandbox --data ~/sandbox --port 8443
  norvane-sandbox --data ~/sandbox --fault 'POST /v2/accounts/*/envelopes apply-close'
  norvane-sandbox --data ~/sandbox --fault 'GET /v2/** status=503 times=2 delay=500'
  curl --cacert CA URL/sandbox/requests        what arrived, in order
  curl --cacert CA URL/sandbox/envelopes       what was accepted, and where it is kept
)";

/// The line that scripts read.
Json readyLine(const SandboxService& service, const std::string& dataFolder) {
    const auto& user = service.credentials();
    return Json::object({{"url", service.url()},
                         {"ca", std::filesystem::absolute(service.caFile()).string()},
                         {"userName", user.userName},
                         {"email", user.email},
                         {"password", user.password},
                         {"integratorKey", user.integratorKey},
                         {"accountId", user.accountId},
                         {"accountName", user.accountName},
                         {"userId", user.userId},
                         {"apiPassword", user.apiPassword},
                         {"accessToken", user.accessToken},
                         {"data", std::filesystem::absolute(dataFolder).string()}});
}

/// Blocks the signals that end the service, in this thread and those that it starts.
sigset_t blockEndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signals;
}

int serve(SandboxService::Options options) {
    const std::string dataFolder = options.dataFolder.string();
    const sigset_t signals = blockEndingSignals();
    SandboxService service(std::move(options));
    service.start();
    const std::string line = readyLine(service, dataFolder).write() + "\n";
    if (std::fputs(line.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        throw std::runtime_error(std::string("cannot write to the standard output: ") + std::strerror(errno));
    int signal = 0;
    sigwait(&signals, &signal);
    service.stop();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    SandboxService::Options options;
    std::string dataFolder;
    std::vector<std::string> faults;
    CLI::App app(kDescription, "norvane-sandbox");
    app.footer(kFooter);
    app.add_option("--data", dataFolder, "folder of the service's own; made when it is missing")->required();
    app.add_option("--port", options.port, "TCP port; 0 takes a free one")->capture_default_str();
    app.add_option("--host", options.host, "IP address to listen on")
        ->capture_default_str()
        ->check([](const std::string& text) {
            return text.find(':') != std::string::npos ? std::string() : CLI::ValidIPV4(text);
        });
    app.add_option("--fault", faults, "something to do wrong; may be repeated, see below")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? 0 : kWrongUsage;
    }
    options.dataFolder = dataFolder;
    for (const std::string& text : faults) {
        const auto fault = parseFault(text);
        if (!fault.ok()) {
            std::fprintf(stderr, "norvane-sandbox: --fault '%s': %s\n", text.c_str(), fault.error.c_str());
            return kWrongUsage;
        }
        options.faults.push_back(fault.fault);
    }
    try {
        return serve(std::move(options));
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "norvane-sandbox: %s\n", problem.what());
        return 1;
    }
}
