#include "src/platform/SecretServiceConnection.h"

#include "src/platform/CredentialErrors.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace norvane {

namespace {

/// Storing an account touches some twenty items; whoever dismissed the prompt for the first is not asked
/// again for each of the others.
constexpr std::chrono::seconds kSilenceAfterRefusal{2};

NVMError unavailable(std::string cause) {
    return credentialError(CredentialStoreError::Unavailable, "The keyring service cannot be reached.",
                           std::move(cause));
}

NVMError locked() {
    return credentialError(CredentialStoreError::Locked, "The keyring is locked. Unlock it and try again.");
}

/// Without an address the bus library would start a bus of its own, in which no one keeps anything.
bool hasSessionBus() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address && *address) return true;
    const char* runtimeFolder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return runtimeFolder && std::filesystem::exists(std::filesystem::path(runtimeFolder) / "bus", error);
}

} // namespace

Deadline::Deadline(std::chrono::milliseconds patience) {
    thread_ = std::thread([this, patience] {
        std::unique_lock lock(mutex_);
        if (overChanged_.wait_for(lock, patience, [this] { return over_; })) return;
        lock.unlock();
        g_cancellable_cancel(cancellable_.get());
    });
}

Deadline::~Deadline() {
    {
        const std::lock_guard lock(mutex_);
        over_ = true;
    }
    overChanged_.notify_all();
    thread_.join();
}

NVMError secretServiceError(GErrorPtr error) {
    if (!error) return unavailable({});
    if (g_error_matches(error.get(), SECRET_ERROR, SECRET_ERROR_IS_LOCKED)) return locked();
    if (error->domain == G_IO_ERROR || error->domain == G_DBUS_ERROR) return unavailable(error->message);
    return credentialError(CredentialStoreError::Failed, "The keyring refused the credentials.",
                           error->message);
}

Result<GObjectPtr<SecretService>> connectToSecretService(GCancellable* cancellable) {
    if (!hasSessionBus()) return unavailable("There is no session bus.");
    GError* error = nullptr;
    const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, &error));
    if (!bus) return secretServiceError(GErrorPtr(error));
    // By default the end of the bus would end the host's process.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    GObjectPtr<SecretService> service(
        secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, cancellable, &error));
    if (!service) return secretServiceError(GErrorPtr(error));
    return service;
}

Result<GObjectPtr<SecretCollection>> defaultCollection(SecretService* service, GCancellable* cancellable) {
    GError* error = nullptr;
    GObjectPtr<SecretCollection> collection(secret_collection_for_alias_sync(
        service, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancellable, &error));
    if (collection) return collection;
    if (error) return secretServiceError(GErrorPtr(error));
    return unavailable("There is no default keyring.");
}

Failure unlock(SecretService* service, gpointer object, GCancellable* cancellable) {
    using Clock = std::chrono::steady_clock;
    static std::atomic<Clock::time_point> lastRefusal{Clock::time_point()};
    if (Clock::now() < lastRefusal.load() + kSilenceAfterRefusal) return locked();
    GError* error = nullptr;
    GList* unlocked = nullptr;
    const std::unique_ptr<GList, decltype(&g_list_free)> objects(g_list_append(nullptr, object),
                                                                 &g_list_free);
    const gint count = secret_service_unlock_sync(service, objects.get(), cancellable, &unlocked, &error);
    const ObjectList owned(unlocked);
    const GErrorPtr failure(error);
    if (count > 0) return std::nullopt;
    lastRefusal = Clock::now();
    return locked();
}

} // namespace norvane
