#pragma once

#include <norvane/platform/Platform.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The default adapters, made by `Platform::complete`. Each is independent of the others but for what its
/// factory takes. Factories that touch the disk say why they failed.
namespace norvane {

/// Where the application keeps its things. All exist after `makeFolders`, with mode 0700.
struct ApplicationFolders {
    std::filesystem::path documents;
    std::filesystem::path support;
    std::filesystem::path caches;
    std::filesystem::path temporary; ///< on the file system of `documents`
    std::filesystem::path defaults;
};

/// By the home of the options or, without one, by the XDG base folders.
ApplicationFolders applicationFolders(const PlatformOptions& options);
Failure makeFolders(ApplicationFolders& folders);

std::shared_ptr<Files> makeLinuxFiles(ApplicationFolders folders);
std::shared_ptr<UserDefaults> makeFileUserDefaults(std::filesystem::path folder, std::shared_ptr<Log> log);
/// Both forget all when they go.
std::shared_ptr<UserDefaults> makeMemoryUserDefaults();
std::shared_ptr<CredentialStore> makeMemoryCredentialStore();
std::shared_ptr<Executors> makeAsioExecutors(std::shared_ptr<TaskQueue> hostMainQueue);
std::shared_ptr<NotificationCentre> makeLocalNotificationCentre();
std::shared_ptr<Clock> makeSystemClock();
std::shared_ptr<Random> makeSystemRandom();
/// `locale` as in `PlatformOptions`.
std::shared_ptr<StringTable> makeJsonStringTable(const std::optional<std::string>& locale);
std::shared_ptr<Log> makeSystemLog();
std::shared_ptr<Alerts> makeUnattendedAlerts(std::shared_ptr<TaskQueue> mainQueue, std::shared_ptr<Log> log);
std::shared_ptr<LocationService> makeUnknownLocation();

/// Keeps the items in one encrypted file of the folder, its key in another.
std::shared_ptr<CredentialStore> makeFileCredentialStore(std::filesystem::path folder);
/// Keeps the items in the desktop's keyring. A locked keyring asks the user; `patience` is how long a call
/// waits for the answer.
std::shared_ptr<CredentialStore>
makeSecretServiceCredentialStore(std::chrono::milliseconds patience = std::chrono::seconds(60));
/// Whether the session bus offers a Secret Service that has a default collection.
bool isSecretServiceAvailable();
/// The store of that kind. A home's first store is written down beside the defaults: `Automatic` keeps to it.
Result<std::shared_ptr<CredentialStore>> makeCredentialStore(CredentialStoreKind kind,
                                                             const ApplicationFolders& folders);

/// Downloads go to the temporary folder, the response cache below the caches folder; `trustAnchorFile` as in
/// `PlatformOptions`. The age of cached responses goes by the clock.
std::shared_ptr<HttpSession> makeCurlHttpSession(std::shared_ptr<Files> files,
                                                 std::optional<std::filesystem::path> trustAnchorFile,
                                                 std::shared_ptr<Clock> clock);
/// Status -1 for good where the kernel's routes may not be read.
std::shared_ptr<Reachability> makeNetlinkReachability();

} // namespace norvane
