#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/SessionState.h>

#include <atomic>
#include <mutex>

namespace norvane {
namespace {

std::atomic<bool> isSetup{false};
std::atomic<bool> isSignedIn{false};
std::atomic<std::uint64_t> session{0}; ///< written under sessionMutex

std::mutex& sessionMutex() {
    static std::mutex mutex;
    return mutex;
}

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

std::uint64_t beginNextSession() {
    const std::lock_guard lock(sessionMutex());
    return ++session;
}

Failure inSession(std::uint64_t number, const std::function<Failure()>& work) {
    const std::lock_guard lock(sessionMutex());
    return number == session ? work() : NVM_errorUserNotLoggedIn();
}

} // namespace norvane
