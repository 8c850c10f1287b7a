#include "src/sdk/SetUp.h"

#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/templates/NVMTemplatesHandler.h>

namespace norvane {
namespace {

void tell(const Failure& error) {
    if (error) Platform::current().log->write(LogLevel::Error, "sign-out: " + error->localizedDescription());
}

/// Everything that the user kept on this device. A store that is not open is opened for it, so that nothing
/// of one user stays for the next.
void removeCaches() {
    NVMEnvelopeSynchronizer::sharedSynchronizer()->cancelSync();
    tell(ObjectStore::setupDefaultStore());
    const auto store = ObjectStore::defaultStore();
    if (!store) return;
    NVMEnvelopesHandler::removeCachedEnvelopes();
    tell(NVMTemplatesHandler::removeCachedTemplates());
    NVMTemplatesHandler::removeCacheStateInProgressForTemplates();
    store->scrub();
    store->removeEarlierStores();
    ObjectStore::closeDefaultStore();
}

} // namespace

bool NVMManager::clearCredentialsAndCachedTemplates() {
    beginNextSession();
    const auto account = NVMCredentials::primaryCredentials();
    if (account && account->accountId) removeCaches();
    tell(NVMCredentials::clearCredentials());
    norvane::NVM_clearCredentialsAndCachedTemplatesSuccessful(true);
    forgetSetUp();
    return true;
}

} // namespace norvane
