#include "sandbox/Operations.h"

#include "sandbox/Text.h"

#include <algorithm>

namespace norvane::sandbox {

namespace {
constexpr std::size_t kMostEntries = 1'000;
constexpr std::size_t kUsualEntries = 100;
} // namespace

Json ownerJson(const Credentials& credentials) {
    return Json::object({{"userName", credentials.userName},
                         {"email", credentials.email},
                         {"userId", credentials.userId},
                         {"userType", "CompanyUser"},
                         {"userStatus", "Active"},
                         {"uri", "/users/" + credentials.userId}});
}

Answer jsonAnswer(const Json& json, int status) {
    Answer answer;
    answer.status = status;
    answer.body = json.write();
    return answer;
}

Paging pagingOf(const Request& request) {
    const std::string startText = request.queryValue("start_position");
    const std::string countText = request.queryValue("count");
    const auto start = startText.empty() ? std::optional(0ULL) : wholeNumber(startText);
    const auto count =
        countText.empty() ? std::optional<unsigned long long>(kUsualEntries) : wholeNumber(countText);
    if (!start || !count || *count == 0 || *count > kMostEntries)
        return {0, 0, "start_position and count must be whole numbers, count at most 1000."};
    return {static_cast<std::size_t>(*start), static_cast<std::size_t>(*count), {}};
}

void addPaging(Json& json, const Paging& paging, std::size_t total, const std::string& uri) {
    const std::size_t end = std::min(total, paging.start + std::min(paging.count, total));
    const std::size_t shown = end > paging.start ? end - paging.start : 0;
    const auto page = [&](std::size_t start) {
        return uri + "?start_position=" + std::to_string(start) + "&count=" + std::to_string(paging.count);
    };
    json.set("resultSetSize", std::to_string(shown)).set("totalSetSize", std::to_string(total));
    json.set("startPosition", std::to_string(paging.start));
    json.set("endPosition", std::to_string(shown > 0 ? end - 1 : paging.start));
    json.set("nextUri", end < total ? page(end) : "");
    json.set("previousUri",
             paging.start > 0 ? page(paging.start - std::min(paging.start, paging.count)) : "");
}

} // namespace norvane::sandbox
