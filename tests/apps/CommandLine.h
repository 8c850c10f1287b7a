#pragma once

#include "sandbox/SandboxService.h"
#include "tests/support/KillTracer.h"
#include "tests/support/TemporaryFolder.h"

#include <norvane/platform/Value.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace norvane {

/// The program `norvane` driven from outside, against a sandbox service in this process.
class CommandLine : public ::testing::Test {
  protected:
    struct Run {
        int status = -1;
        std::string output;
        std::string errors;
        Value json() const; ///< the output as a document; null, and a failed test, when it is none
    };

    CommandLine();

    /// Runs with the home, the authority and file credentials given; `arguments` follow.
    Run run(const std::vector<std::string>& arguments) const;
    Run runIn(const std::filesystem::path& home, const std::vector<std::string>& arguments) const;
    /// The whole command, for the tracer.
    testing::KillTracer::Command command(const std::filesystem::path& home,
                                         const std::vector<std::string>& arguments) const;

    void signIn() const;
    /// The lease, ready to be signed.
    void cacheLease() const;
    /// A script that signs the lease with two people; `edit` may change it first.
    std::filesystem::path leaseScript(const std::function<void(Dictionary&)>& edit = {}) const;
    std::string leaseId() const { return sandbox::kLeaseTemplateId; }
    std::vector<std::string> signArguments() const;
    std::size_t envelopesOnDevice(const std::filesystem::path& home) const;

    TemporaryFolder folder_;
    std::filesystem::path home_ = folder_.path() / "home";
    sandbox::SandboxService service_;
};

} // namespace norvane
