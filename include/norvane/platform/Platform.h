#pragma once

#include <norvane/platform/Alerts.h>
#include <norvane/platform/Clock.h>
#include <norvane/platform/CredentialStore.h>
#include <norvane/platform/Executors.h>
#include <norvane/platform/Files.h>
#include <norvane/platform/HttpSession.h>
#include <norvane/platform/Location.h>
#include <norvane/platform/Log.h>
#include <norvane/platform/NotificationCentre.h>
#include <norvane/platform/Reachability.h>
#include <norvane/platform/StringTable.h>
#include <norvane/platform/UserDefaults.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

/// Which adapter keeps the credentials. A home remembers the first one, named or chosen, and `Automatic`
/// keeps to it, so that a sign-in made with one adapter is not lost to a later run with another.
enum class CredentialStoreKind { Automatic, SecretService, File };

/// How the default adapters are made.
struct PlatformOptions {
    /// All folders of the application go below it ("Documents", "support", "defaults", "caches"); a relative
    /// one is below the working directory of now. Without one they follow the XDG folders of
    /// `applicationName`.
    std::optional<std::filesystem::path> home;
    std::string applicationName = "norvane";
    /// PEM file of the only certificate authority to trust; without one, the system's.
    std::optional<std::filesystem::path> trustAnchorFile;
    CredentialStoreKind credentialStore = CredentialStoreKind::Automatic;
    /// The host's main loop; without one the main queue is a thread of the kit's own. Its `async` must be
    /// safe to call from every thread.
    std::shared_ptr<TaskQueue> mainQueue;
    /// Language of the string table ("de", "fr_CA"); without one, the system's.
    std::optional<std::string> locale;
};

/// What the kit takes from its surroundings, a port a member. A host fills in the members that it provides
/// itself; `complete` gives every member still null its Linux adapter.
struct Platform {
    std::shared_ptr<Files> files;
    std::shared_ptr<UserDefaults> userDefaults;
    std::shared_ptr<CredentialStore> credentials;
    std::shared_ptr<HttpSession> http;
    std::shared_ptr<Reachability> reachability;
    std::shared_ptr<Executors> executors;
    std::shared_ptr<NotificationCentre> notifications;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<Random> random;
    std::shared_ptr<StringTable> strings;
    std::shared_ptr<Log> log;
    std::shared_ptr<Alerts> alerts;
    std::shared_ptr<LocationService> location;
    double displayScale = 2; ///< device pixels a point
    std::string deviceName;  ///< shown to signers ("Please pass the ..."); the host name by default
    std::string deviceModel;

    /// Fills in what is missing. An error names the folder or file that could not be made.
    static Result<Platform> complete(Platform given, const PlatformOptions& options = {});

    /// For tools that keep nothing: fills in what needs no folder, thread or connection (settings and
    /// credentials in memory, notifications, clock, random, texts, log). Other members stay as given, perhaps
    /// null: such a platform is good for records, their queries and validators, not for `NVMManager::setup`.
    static Platform withoutHome(Platform given, const PlatformOptions& options = {});

    /// Makes this the process's platform. Before the first `NVMManager::setup`, or between a sign-out and the
    /// next set-up; never while the kit works.
    static void install(Platform platform);
    /// The installed platform; the first call without one installs `complete({})`. Throws NVMException when
    /// that fails. The reference stays valid until the next `install`.
    static const Platform& current();
};

} // namespace norvane
