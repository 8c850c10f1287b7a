#include "src/platform/RouteTable.h"

#include "src/platform/FileDescriptor.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <set>

namespace norvane {
namespace {

/// The kernel answers at once; this only keeps a broken one from holding us up.
constexpr int kAnswerMilliseconds = 5'000;

using Visit = std::function<void(const nlmsghdr& message)>;

bool request(const FileDescriptor& socket, std::uint16_t type) {
    struct {
        nlmsghdr header{};
        rtgenmsg family{};
    } message;
    message.header.nlmsg_len = NLMSG_LENGTH(sizeof message.family);
    message.header.nlmsg_type = type;
    message.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    message.family.rtgen_family = AF_UNSPEC;
    return ::send(socket.get(), &message, message.header.nlmsg_len, 0) >= 0;
}

/// Hands over every message of the table; false when the kernel refuses or stays silent. A change in between
/// brings a notice that makes us look again.
bool dump(std::uint16_t type, const Visit& visit) {
    const FileDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    if (!socket.isOpen() || !request(socket, type)) return false;
    alignas(nlmsghdr) std::array<char, 32768> buffer;
    while (true) {
        pollfd readable{socket.get(), POLLIN, 0};
        if (::poll(&readable, 1, kAnswerMilliseconds) <= 0) return false;
        const ssize_t received = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (received <= 0) return false;
        auto left = static_cast<unsigned>(received);
        for (auto* message = reinterpret_cast<nlmsghdr*>(buffer.data()); NLMSG_OK(message, left);
             message = NLMSG_NEXT(message, left)) {
            if (message->nlmsg_type == NLMSG_DONE) return true;
            if (message->nlmsg_type == NLMSG_ERROR) return false;
            visit(*message);
        }
    }
}

std::optional<std::set<int>> interfacesThatAreUp() {
    std::set<int> up;
    const bool complete = dump(RTM_GETLINK, [&up](const nlmsghdr& message) {
        if (message.nlmsg_type != RTM_NEWLINK) return;
        const auto& link = *static_cast<const ifinfomsg*>(NLMSG_DATA(&message));
        constexpr unsigned needed = IFF_UP | IFF_RUNNING;
        if ((link.ifi_flags & needed) == needed && !(link.ifi_flags & IFF_LOOPBACK))
            up.insert(link.ifi_index);
    });
    if (!complete) return std::nullopt;
    return up;
}

/// 169.254.0.0/16, fe80::/10, and multicast.
bool isLocalOrMulticast(unsigned char family, const unsigned char* address) {
    if (family == AF_INET) return (address[0] == 169 && address[1] == 254) || address[0] >= 224;
    return (address[0] == 0xfe && (address[1] & 0xc0) == 0x80) || address[0] == 0xff;
}

bool leadsOut(const nlmsghdr& message, const std::set<int>& up) {
    const auto& route = *static_cast<const rtmsg*>(NLMSG_DATA(&message));
    if (message.nlmsg_type != RTM_NEWROUTE || route.rtm_type != RTN_UNICAST) return false;
    if (route.rtm_family != AF_INET && route.rtm_family != AF_INET6) return false;
    bool overInterface = false;
    auto left = static_cast<unsigned>(RTM_PAYLOAD(&message));
    for (const rtattr* field = RTM_RTA(&route); RTA_OK(field, left); field = RTA_NEXT(field, left)) {
        const void* content = RTA_DATA(field);
        if (field->rta_type == RTA_DST &&
            isLocalOrMulticast(route.rtm_family, static_cast<const unsigned char*>(content)))
            return false;
        if (field->rta_type == RTA_OIF) {
            int index = 0;
            std::memcpy(&index, content, sizeof index);
            overInterface = up.contains(index);
        }
        // Several ways to one place: the kernel keeps only those whose interfaces are there.
        if (field->rta_type == RTA_MULTIPATH) overInterface = !up.empty();
    }
    return overInterface;
}

} // namespace

std::optional<bool> hasUsableRoute() {
    const auto up = interfacesThatAreUp();
    if (!up) return std::nullopt;
    bool found = false;
    const bool complete =
        dump(RTM_GETROUTE, [&](const nlmsghdr& message) { found = found || leadsOut(message, *up); });
    if (!complete) return std::nullopt;
    return found;
}

} // namespace norvane
