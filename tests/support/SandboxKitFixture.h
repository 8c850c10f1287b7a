#pragma once

#include "sandbox/SandboxService.h"
#include "tests/support/Event.h"
#include "tests/support/FakeCredentialStore.h"
#include "tests/support/KitFixture.h"

#include <norvane/sdk/NVMManager.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace norvane {

/// The whole kit against a signing service of the test's own, over TLS. Credentials are kept in memory and
/// outlive a `restart`. The kit is signed out, and its store closed, when a test ends.
class SandboxKitFixture : public KitFixture {
  protected:
    struct SignInAnswer {
        std::optional<NVMAccountInfo> info;
        Failure error;
    };

    void adjust(Platform& given, PlatformOptions& options) override {
        options.trustAnchorFile = service_.caFile();
        given.credentials = credentials_;
    }
    void TearDown() override { NVMManager::clearCredentialsAndCachedTemplates(); }

    const sandbox::Credentials& user() const { return service_.credentials(); }
    Url host() const { return *Url::parse(service_.url()); }

    /// What `start`, given a completion, is told first; waits for it.
    template <class Start>
    static Failure failureOf(Start start) {
        const auto done = std::make_shared<Event>();
        const auto error = std::make_shared<Failure>();
        start([=](Failure told) {
            *error = std::move(told);
            done->set();
        });
        if (!done->wait()) ADD_FAILURE() << "the operation did not end";
        return *error;
    }

    /// The first `count` answers to a sign-in with this password.
    std::vector<SignInAnswer> signInWithPassword(const std::string& password, int count = 1) const {
        const auto done = std::make_shared<Event>();
        const auto answers = std::make_shared<std::vector<SignInAnswer>>();
        NVMManager::loginWithUserId(user().email, password, user().integratorKey, host(),
                                    [=](std::optional<NVMAccountInfo> info, Failure error) {
                                        answers->push_back({std::move(info), std::move(error)});
                                        done->set();
                                    });
        if (!done->wait(count)) ADD_FAILURE() << "the sign-in did not end";
        return *answers;
    }
    void signIn() const {
        NVMManager::setup();
        const auto answers = signInWithPassword(user().password);
        ASSERT_EQ(answers.size(), 1u);
        ASSERT_EQ(answers.front().error, std::nullopt) << answers.front().error->localizedDescription();
    }

    TemporaryFolder serviceFolder_;
    sandbox::SandboxService service_{{.dataFolder = serviceFolder_.path(), .faults = {}}};
    const bool isServing_ = (service_.start(), true);
    std::shared_ptr<FakeCredentialStore> credentials_ = std::make_shared<FakeCredentialStore>();
};

} // namespace norvane
