#include "src/sdk/SetUp.h"

#include <norvane/platform/Platform.h>
#include <norvane/platform/TextCase.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMAppearance.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/templates/NVMTemplatesHandler.h>

#include <atomic>
#include <mutex>

namespace norvane {
namespace {

std::atomic<std::uint64_t> kNVMLoggingLevel{1};

struct SetUpState {
    std::mutex running; ///< one set-up at a time
    std::mutex mutex;   ///< guards `error`
    Failure error = NVM_errorSetupIncomplete();
};

SetUpState& state() {
    static SetUpState made;
    return made;
}

void keepError(Failure error) {
    const std::lock_guard lock(state().mutex);
    state().error = std::move(error);
}

void storeSetting(const Value& value, const std::string& key) {
    if (const Failure error = nvm_setDefaults(value, key))
        Platform::current().log->write(LogLevel::Error, key + " not kept: " + error->localizedDescription());
}

} // namespace

void forgetSetUp() { keepError(NVM_errorSetupIncomplete()); }

void NVMManager::setup() {
    const std::lock_guard running(state().running);
    Failure error = NVMTemplatesHandler::setup();
    NVMTemplatesHandler::setLoggingLevel(kNVMLoggingLevel);
    // The PDF engine needs no start.
    const bool isOpen = !error;
    keepError(std::move(error));
    NVM_setupSuccessful(isOpen);
    NVMAppearance::applyDefaultAppearance();
}

void NVMManager::setupWithConfiguration(const Dictionary& configuration) {
    setup();
    for (const auto& [key, value] : configuration) {
        const auto text = value.stringValue();
        if (value.isNumber()) {
            storeSetting(value, key);
        } else if (text) {
            storeSetting(lowercased(*text), key);
        }
    }
}

Failure NVMManager::setupError() {
    const std::lock_guard lock(state().mutex);
    return state().error;
}

Failure NVMManager::restoreSignIn() {
    const std::uint64_t session = sessionNumber();
    setup();
    if (auto error = setupError()) return error;
    return inSession(session, []() -> Failure {
        if (!NVMCredentials::primaryCredentials()) return NVM_errorUserNotLoggedIn();
        norvane::NVM_loginSuccessful(true);
        return std::nullopt;
    });
}

void NVMManager::setLoggingLevel(std::uint64_t level) {
    kNVMLoggingLevel = level;
    NVMTemplatesHandler::setLoggingLevel(level);
}

std::uint64_t NVMManager::loggingLevel() { return kNVMLoggingLevel; }

} // namespace norvane
