#include <norvane/platform/Platform.h>
#include <norvane/sdk/SessionState.h>

#include <atomic>

namespace norvane {
namespace {

std::atomic<bool> isSetup{false};
std::atomic<bool> isSignedIn{false};
std::atomic<std::uint64_t> session{0};

TaskQueue& setupLoginStateSetterQueue() {
    static const std::shared_ptr<TaskQueue> queue =
        Platform::current().executors->makeSerialQueue("com.norvane.mobile.sdk.manager.setup-login.queue");
    return *queue;
}

} // namespace

bool setupSuccessful() { return isSetup; }

bool loginSuccessful() { return isSignedIn; }

void NVM_setupSuccessful(bool successful) {
    setupLoginStateSetterQueue().sync([successful] { isSetup = successful; });
}

void NVM_loginSuccessful(bool successful) {
    setupLoginStateSetterQueue().sync([successful] { isSignedIn = successful; });
}

void NVM_clearCredentialsAndCachedTemplatesSuccessful(bool successful) {
    if (!successful) return;
    setupLoginStateSetterQueue().sync([] {
        isSetup = false;
        isSignedIn = false;
    });
}

bool NVM_isSetupAndLoginSuccessful() { return isSetup && isSignedIn; }

std::uint64_t sessionNumber() { return session; }

std::unique_lock<std::mutex> holdSession() {
    static std::mutex held;
    return std::unique_lock(held);
}

void beginNextSession() {
    const auto hold = holdSession();
    ++session;
}

} // namespace norvane
