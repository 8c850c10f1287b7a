#pragma once

#include <norvane/platform/CredentialStore.h>

#include <libsecret/secret.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace norvane {

struct GObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectRelease>;

struct GErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
using GErrorPtr = std::unique_ptr<GError, GErrorRelease>;

struct ObjectListRelease {
    void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};
using ObjectList = std::unique_ptr<GList, ObjectListRelease>;

/// Ends a call to the service that takes longer than its user can be expected to wait.
class Deadline {
  public:
    explicit Deadline(std::chrono::milliseconds patience);
    ~Deadline();
    GCancellable* cancellable() const { return cancellable_.get(); }

  private:
    GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
    std::mutex mutex_; ///< guards `over_`
    std::condition_variable overChanged_;
    bool over_ = false;
    std::thread thread_;
};

/// What libsecret said as an error of the port. Takes the error; null reads as "cannot be reached".
NVMError secretServiceError(GErrorPtr error);

/// The service with an open session. Unavailable when there is no session bus or nobody offers the service.
Result<GObjectPtr<SecretService>> connectToSecretService(GCancellable* cancellable);

/// The default collection. Unavailable when there is none: making one would ask the user for a new password.
Result<GObjectPtr<SecretCollection>> defaultCollection(SecretService* service, GCancellable* cancellable);

/// Asks the user to unlock the collection or item. Locked when that does not happen in time, or when the user
/// refused a moment ago.
Failure unlock(SecretService* service, gpointer object, GCancellable* cancellable);

} // namespace norvane
