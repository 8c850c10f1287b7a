#pragma once

#include "sandbox/Credentials.h"
#include "sandbox/Fault.h"
#include "sandbox/ReceivedEnvelope.h"
#include "sandbox/RequestLog.h"
#include "sandbox/TemplateIds.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// A signing service to develop and test against: HTTPS on an address of this machine, one account with one
/// user, a few templates, and faults on request. Several may run in one process, each with a data folder of
/// its own. Everything it is given or sent is kept under the data folder, which outlives it.
class SandboxService {
  public:
    struct Options {
        std::filesystem::path dataFolder;              ///< made when it is missing
        std::string host = "127.0.0.1";                ///< an IP address to listen on
        std::uint16_t port = 0;                        ///< 0 takes a free one
        std::uint64_t maximumBodyBytes = 256ULL << 20; ///< larger bodies are answered with 413
        std::vector<Fault> faults;
    };

    explicit SandboxService(Options options);
    ~SandboxService(); ///< stops
    SandboxService(const SandboxService&) = delete;
    SandboxService& operator=(const SandboxService&) = delete;

    /// Listens when it returns; throws std::runtime_error, with the reason, when it cannot. Once only.
    void start();
    /// Closes every connection and joins the threads; what was kept stays. Harmless when it does not run.
    void stop();

    // These hold from start() on, and after stop() too.
    const std::string& url() const; ///< "https://127.0.0.1:PORT", no slash at its end
    std::uint16_t port() const;
    const std::filesystem::path& caFile() const; ///< certificate of the authority, PEM: what a client trusts
    const Credentials& credentials() const;

    // Any thread may call these.
    void addFault(Fault fault);
    /// The text form of parseFault(); throws std::invalid_argument when it is not understood.
    void addFault(const std::string& text);
    void clearFaults();
    /// The requests in order of arrival, without those under /sandbox.
    std::vector<LoggedRequest> requests() const;
    /// Waits until that many requests have been answered, cut off or left to hang; false when they have not
    /// within the time.
    bool waitForRequests(std::size_t count, std::chrono::milliseconds time = std::chrono::seconds(30)) const;
    std::vector<ReceivedEnvelope> receivedEnvelopes() const; ///< in order of arrival
    void forgetEnvelopes();                                  ///< as if none had ever been received

  private:
    class Running;
    Options options_;
    std::unique_ptr<Running> running_;
};

} // namespace norvane::sandbox
