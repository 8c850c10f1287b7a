#include "src/platform/Adapters.h"

#include <norvane/platform/NVMException.h>
#include <norvane/platform/Platform.h>

#include <unistd.h>

#include <mutex>

namespace norvane {

namespace {

std::string hostName() {
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0) return {};
    return name;
}

/// Fills a member that the host left out.
template <class Port, class Make>
void provide(std::shared_ptr<Port>& member, Make make) {
    if (!member) member = make();
}

struct Installation {
    std::mutex mutex; ///< guards `platform`
    std::unique_ptr<const Platform> platform;

    void replace(std::unique_ptr<const Platform> fresh) {
        {
            const std::lock_guard lock(mutex);
            platform.swap(fresh);
        }
        fresh.reset(); // ends the adapters of the one before, which may call back
    }
};

Installation& installation() {
    static Installation made;
    return made;
}

/// Ends the adapters when the process ends: made after the libraries under them, it goes before those.
struct EndAtExit {
    ~EndAtExit() { installation().replace(nullptr); }
};

const Platform* installed() {
    Installation& current = installation();
    const std::lock_guard lock(current.mutex);
    return current.platform.get();
}

} // namespace

Result<Platform> Platform::complete(Platform given, const PlatformOptions& options) {
    Platform platform = std::move(given);
    ApplicationFolders folders = applicationFolders(options);
    if (auto error = makeFolders(folders)) return *error;

    provide(platform.log, makeSystemLog);
    provide(platform.files, [&] { return makeLinuxFiles(folders); });
    provide(platform.userDefaults, [&] { return makeFileUserDefaults(folders.defaults, platform.log); });
    provide(platform.executors, [&] { return makeAsioExecutors(options.mainQueue); });
    provide(platform.notifications, makeLocalNotificationCentre);
    provide(platform.clock, makeSystemClock);
    provide(platform.random, makeSystemRandom);
    provide(platform.strings, [&] { return makeJsonStringTable(options.locale); });
    provide(platform.alerts,
            [&] { return makeUnattendedAlerts(platform.executors->mainQueue(), platform.log); });
    provide(platform.location, makeUnknownLocation);
    if (!platform.credentials) {
        auto store = makeCredentialStore(options.credentialStore, folders);
        if (!store) return store.error();
        platform.credentials = std::move(*store);
    }
    provide(platform.http,
            [&] { return makeCurlHttpSession(platform.files, options.trustAnchorFile, platform.clock); });
    provide(platform.reachability, makeNetlinkReachability);
    if (platform.deviceName.empty()) platform.deviceName = hostName();
    if (platform.deviceModel.empty()) platform.deviceModel = platform.strings->text("Device.Model");
    return platform;
}

Platform Platform::withoutHome(Platform given, const PlatformOptions& options) {
    Platform platform = std::move(given);
    provide(platform.log, makeSystemLog);
    provide(platform.userDefaults, makeMemoryUserDefaults);
    provide(platform.credentials, makeMemoryCredentialStore);
    provide(platform.notifications, makeLocalNotificationCentre);
    provide(platform.clock, makeSystemClock);
    provide(platform.random, makeSystemRandom);
    provide(platform.strings, [&] { return makeJsonStringTable(options.locale); });
    return platform;
}

void Platform::install(Platform platform) {
    installation().replace(std::make_unique<const Platform>(std::move(platform)));
    static const EndAtExit endAtExit;
}

const Platform& Platform::current() {
    static std::mutex firstUse;
    const std::lock_guard lock(firstUse);
    if (const Platform* platform = installed()) return *platform;
    auto platform = complete({});
    if (!platform) throw NVMException("NoPlatform", platform.error().localizedDescription());
    install(std::move(*platform));
    return *installed();
}

} // namespace norvane
