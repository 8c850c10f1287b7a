// A whole host program: signs in, keeps the first template of the account on the device and says what it
// holds.
//   host-example URL CA_FILE INTEGRATOR_KEY USER HOME     (the password in NORVANE_PASSWORD)
#include <norvane/norvane.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <iostream>

int main(int argc, char** argv) {
    using namespace norvane;
    if (argc != 6) return std::cerr << "usage: host-example URL CA_FILE INTEGRATOR_KEY USER HOME\n", 2;

    PlatformOptions options;
    options.home = argv[5];
    options.trustAnchorFile = argv[2];
    options.credentialStore = CredentialStoreKind::File;
    auto platform = Platform::complete({}, options);
    if (!platform) return std::cerr << platform.error().localizedDescription() << '\n', 1;
    Platform::install(*platform);
    NVMManager::setupWithConfiguration({{std::string(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY), "true"}});

    auto signedIn = std::make_shared<std::promise<bool>>(); // a refused sign-in may complete more than once
    auto answered = std::make_shared<std::atomic_flag>();
    const char* password = std::getenv("NORVANE_PASSWORD");
    NVMManager::loginWithUserId(argv[4], password ? password : "", argv[3], *Url::parse(argv[1]),
                                [=](std::optional<NVMAccountInfo> info, std::optional<NVMError> error) {
                                    if (error) std::cerr << error->localizedDescription() << '\n';
                                    if (!answered->test_and_set()) signedIn->set_value(info && !error);
                                });
    if (!signedIn->get_future().get()) return 1;

    NVMTemplatesManager templates;
    std::promise<std::string> listed;
    templates.listTemplatesWithCompletion([&](auto list, auto) {
        listed.set_value(list && !list->empty() ? list->front()->templateId.value_or("") : "");
    });
    const std::string id = listed.get_future().get();
    std::promise<bool> cached;
    templates.cacheTemplateWithId(id, [&](std::optional<NVMError> error) { cached.set_value(!error); });
    if (!cached.get_future().get()) return 1;
    const auto kept = templates.cachedTemplateWithId(id, false);
    std::cout << kept->envelopeTemplateDefinition->name.value_or("") << " is on this device\n";
}
