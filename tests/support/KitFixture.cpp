#include "tests/support/KitFixture.h"

#include "src/platform/Adapters.h"

namespace norvane {

KitFixture::KitFixture() = default;

KitFixture::~KitFixture() {
    alerts_.reset();
    Platform::install(Platform());
}

void KitFixture::SetUp() { restart(); }

void KitFixture::restart() {
    alerts_.reset();
    Platform::install(Platform());
    PlatformOptions options;
    options.home = home_.path();
    options.credentialStore = CredentialStoreKind::File;
    options.locale = "en";
    Platform given;
    given.log = log_;
    given.executors = makeAsioExecutors(nullptr);
    alerts_ = std::make_shared<RecordingAlerts>(given.executors->mainQueue());
    given.alerts = alerts_;
    adjust(given, options);
    auto completed = Platform::complete(std::move(given), options);
    ASSERT_TRUE(completed.ok()) << completed.error().localizedDescription();
    Platform::install(std::move(*completed));
}

void KitFixture::adjust(Platform&, PlatformOptions&) {}

} // namespace norvane
