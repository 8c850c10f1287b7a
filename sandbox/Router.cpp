#include "sandbox/Router.h"

#include "sandbox/Text.h"

#include <optional>
#include <utility>

namespace norvane::sandbox {

namespace {

std::optional<PathParameters> parametersOf(const std::vector<std::string>& pattern,
                                           const std::vector<std::string>& path) {
    if (pattern.size() != path.size()) return std::nullopt;
    PathParameters parameters;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        const std::string& expected = pattern[index];
        const auto given = percentDecoded(path[index]);
        if (!given) return std::nullopt;
        if (expected.starts_with('{') && !given->empty())
            parameters[expected.substr(1, expected.size() - 2)] = *given;
        else if (expected != *given)
            return std::nullopt;
    }
    return parameters;
}

} // namespace

void Router::add(const std::string& method, const std::string& pattern, Operation operation) {
    routes_.push_back({method, split(pattern, '/'), std::move(operation)});
}

Router::Match Router::match(const std::string& method, const std::string& path) const {
    Match match;
    const auto segments = split(path, '/');
    for (const Route& route : routes_) {
        auto parameters = parametersOf(route.segments, segments);
        if (!parameters) continue;
        if (route.method == method) return {&route.operation, std::move(*parameters), {}};
        match.allowed += (match.allowed.empty() ? "" : ", ") + route.method;
    }
    return match;
}

} // namespace norvane::sandbox
