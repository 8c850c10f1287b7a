#include "tests/platform/PrivateKeyring.h"

#include "src/platform/SecretServiceConnection.h"
#include "tests/support/Event.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace norvane {

namespace {

/// Waits, with a loop of its own, until somebody on the bus owns the name or nobody does.
class OwnerWait {
  public:
    OwnerWait(const char* name, bool wantsOwner)
        : wantsOwner_(wantsOwner) {
        g_main_context_push_thread_default(context_);
        const guint watch = g_bus_watch_name(
            G_BUS_TYPE_SESSION, name, G_BUS_NAME_WATCHER_FLAGS_NONE,
            [](GDBusConnection*, const gchar*, const gchar*, gpointer self) { see(self, true); },
            [](GDBusConnection*, const gchar*, gpointer self) { see(self, false); }, this, nullptr);
        GSource* timeout = g_timeout_source_new_seconds(static_cast<guint>(kTestPatience.count()));
        g_source_set_callback(
            timeout, [](gpointer self) -> gboolean { return quit(self); }, this, nullptr);
        g_source_attach(timeout, context_);
        g_main_loop_run(loop_);
        g_source_destroy(timeout);
        g_source_unref(timeout);
        g_bus_unwatch_name(watch);
        g_main_context_pop_thread_default(context_);
    }
    ~OwnerWait() {
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }
    OwnerWait(const OwnerWait&) = delete;
    OwnerWait& operator=(const OwnerWait&) = delete;

    bool succeeded() const { return succeeded_; }

  private:
    static void see(gpointer self, bool isOwned) {
        auto* wait = static_cast<OwnerWait*>(self);
        if (isOwned != wait->wantsOwner_) return;
        wait->succeeded_ = true;
        quit(self);
    }
    static gboolean quit(gpointer self) {
        g_main_loop_quit(static_cast<OwnerWait*>(self)->loop_);
        return G_SOURCE_REMOVE;
    }

    GMainContext* context_ = g_main_context_new();
    GMainLoop* loop_ = g_main_loop_new(context_, FALSE);
    const bool wantsOwner_;
    bool succeeded_ = false;
};

constexpr const char* kServiceName = "org.freedesktop.secrets";

} // namespace

PrivateKeyring& PrivateKeyring::shared() {
    static PrivateKeyring made;
    return made;
}

PrivateKeyring::PrivateKeyring() {
    // A bus that starts no service by itself: no prompter, no keyring of the user's.
    const auto config = folder_.file("bus.conf", R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN" "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=)" + folder_.path().string() + R"(</listen>
  <policy context="default"><allow send_destination="*"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>)");
    bus_ = ChildProcess(
        {{"dbus-daemon", "--config-file=" + config.string(), "--print-address", "--nofork"}, {}, {}, true});
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.readLine().c_str(), 1);
    start();
}

void PrivateKeyring::start() {
    const std::string folder = folder_.path();
    keyring_ = ChildProcess({{"gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"},
                             {{"HOME", folder}, {"XDG_DATA_HOME", folder}, {"XDG_RUNTIME_DIR", folder}},
                             "\n",
                             true});
    EXPECT_TRUE(OwnerWait(kServiceName, true).succeeded());
}

void PrivateKeyring::restart() {
    keyring_.stop();
    EXPECT_TRUE(OwnerWait(kServiceName, false).succeeded());
    start();
}

void PrivateKeyring::lock() {
    const Deadline deadline(kTestPatience);
    const auto service = connectToSecretService(deadline.cancellable());
    ASSERT_TRUE(service.ok());
    const auto collection = defaultCollection(service->get(), deadline.cancellable());
    ASSERT_TRUE(collection.ok());
    GList objects{collection->get(), nullptr, nullptr};
    GError* error = nullptr;
    EXPECT_EQ(secret_service_lock_sync(service->get(), &objects, deadline.cancellable(), nullptr, &error), 1);
    EXPECT_EQ(GErrorPtr(error), nullptr);
}

} // namespace norvane
