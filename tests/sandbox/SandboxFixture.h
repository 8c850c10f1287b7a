#pragma once

#include "sandbox/Text.h"
#include "tests/sandbox/Client.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace norvane::sandbox {

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
    SandboxService service{optionsFor(folder.path())};
    const bool started = (service.start(), true); ///< before the client, which reads the address
    Client client{service};
};

} // namespace norvane::sandbox
