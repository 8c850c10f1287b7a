#include "Kit.h"

#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMManager.h>

namespace norvane::cli {

namespace {

/// Answers every alert with its first action that destroys nothing.
class SelfAnsweringAlerts : public Alerts {
  public:
    void present(Alert alert) override {
        for (const Alert::Action& action : alert.actions) {
            if (action.isDestructive) continue;
            if (action.handler) Platform::current().executors->mainQueue()->async(action.handler);
            return;
        }
    }
    void showError(const std::string& message) override { warn(message); }
};

} // namespace

Failure installPlatform(const GlobalOptions& options) {
    PlatformOptions platformOptions;
    platformOptions.home = options.home;
    platformOptions.trustAnchorFile = options.trustAnchor;
    if (options.credentials == "file") platformOptions.credentialStore = CredentialStoreKind::File;
    if (options.credentials == "secret-service")
        platformOptions.credentialStore = CredentialStoreKind::SecretService;
    Platform given;
    given.alerts = std::make_shared<SelfAnsweringAlerts>();
    auto platform = Platform::complete(std::move(given), platformOptions);
    if (!platform) return platform.error();
    Platform::install(std::move(*platform));
    return std::nullopt;
}

void installPlatformWithoutHome(std::optional<std::string> locale) {
    PlatformOptions options;
    options.locale = std::move(locale);
    Platform::install(Platform::withoutHome({}, options));
}

Failure setUpKit() {
    NVMManager::setup();
    return NVMManager::setupError();
}

Failure openKit() { return NVMManager::restoreSignIn(); }

} // namespace norvane::cli
