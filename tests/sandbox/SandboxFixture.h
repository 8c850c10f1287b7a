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
    /// Path of an envelope made from the consent, with its participant named.
    std::string consentEnvelope(const std::string& status = "sent") {
        const Json role =
            Json::object({{"roleName", "Participant"}, {"name", "Ada Finch"}, {"email", "ada@x.example"}});
        Json definition = Json::object({{"status", status}, {"templateId", kConsentTemplateId}});
        definition.set("templateRoles", Json::Array{role});
        const Reply reply = client.send("POST", "envelopes", definition.write());
        return "envelopes/" + reply.json().text("envelopeId");
    }

    TemporaryFolder folder;
    SandboxService service{optionsFor(folder.path())};
    const bool started = (service.start(), true); ///< before the client, which reads the address
    Client client{service};
};

} // namespace norvane::sandbox
