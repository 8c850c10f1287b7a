#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "sandbox/Text.h"
#include "tests/sandbox/Client.h"

namespace norvane::sandbox {

/// A folder that goes with the test.
class TemporaryFolder {
  public:
    TemporaryFolder() : path(std::filesystem::temp_directory_path() / ("sandbox-test-" + randomHex(8))) {}
    ~TemporaryFolder() { std::filesystem::remove_all(path); }
    const std::filesystem::path path;
};

/// A running service and a client of it.
class SandboxFixture : public testing::Test {
  protected:
    static SandboxService::Options optionsFor(const std::filesystem::path& folder) {
        SandboxService::Options options;
        options.dataFolder = folder;
        options.maximumBodyBytes = 8 << 20;
        return options;
    }
    const Credentials& user() const { return service.credentials(); }

    TemporaryFolder folder;
    SandboxService service{optionsFor(folder.path)};
    const bool started = (service.start(), true); ///< before the client, which reads the address
    Client client{service};
};

} // namespace norvane::sandbox
