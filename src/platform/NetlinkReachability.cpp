#include "src/platform/NetlinkReachability.h"

#include "src/platform/Adapters.h"
#include "src/platform/FileDescriptor.h"
#include "src/platform/RouteTable.h"
#include "src/platform/StatusObservers.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>

namespace norvane {
namespace {

/// A socket that becomes readable when links or routes change; closed where that is not permitted.
FileDescriptor openNotices() {
    FileDescriptor notices(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    if (notices.isOpen() && ::bind(notices.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        notices.close();
    return notices;
}

/// Empties the socket: what changed does not matter, the table is read anew. An overflow (ENOBUFS) is a
/// change.
void drain(int notices) {
    std::array<char, 8192> buffer;
    while (::recv(notices, buffer.data(), buffer.size(), 0) > 0 || errno == EINTR || errno == ENOBUFS) {
    }
}

} // namespace

struct NetlinkReachability::Monitor {
    FileDescriptor notices = openNotices();
    FileDescriptor wakeUps{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    StatusObservers observers;
    std::atomic<int> status{-1};
    std::atomic<bool> stopping{false};

    void look() {
        if (!notices.isOpen()) return;
        if (const auto usable = hasUsableRoute()) status = *usable ? 1 : 0;
    }

    void wake() const {
        const std::uint64_t one = 1;
        // The counter can only be full when a wake-up is due anyway.
        [[maybe_unused]] const ssize_t written = ::write(wakeUps.get(), &one, sizeof one);
    }

    void run() {
        while (!stopping) {
            observers.tell(status);
            std::array<pollfd, 2> sources{pollfd{wakeUps.get(), POLLIN, 0}, pollfd{notices.get(), POLLIN, 0}};
            if (::poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR) return;
            if (sources[0].revents) {
                std::uint64_t count = 0;
                [[maybe_unused]] const ssize_t read = ::read(wakeUps.get(), &count, sizeof count);
            }
            if (sources[1].revents) {
                drain(notices.get());
                look();
            }
        }
    }
};

NetlinkReachability::NetlinkReachability()
    : monitor_(std::make_shared<Monitor>()) {
    monitor_->look();
    thread_ = std::thread([monitor = monitor_] { monitor->run(); });
}

NetlinkReachability::~NetlinkReachability() {
    monitor_->stopping = true;
    monitor_->wake();
    if (thread_.get_id() == std::this_thread::get_id())
        thread_.detach();
    else
        thread_.join();
}

int NetlinkReachability::status() const { return monitor_->status; }

std::shared_ptr<void> NetlinkReachability::observe(Callback callback) {
    const auto monitor = monitor_; // a callback may destroy this object before we are through
    auto token = monitor->observers.add(std::move(callback));
    monitor->wake();
    return token;
}

std::shared_ptr<Reachability> makeNetlinkReachability() { return std::make_shared<NetlinkReachability>(); }

} // namespace norvane
