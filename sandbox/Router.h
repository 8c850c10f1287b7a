#pragma once

#include "sandbox/HttpMessage.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// Values of the braces of a path pattern, escapes undone.
using PathParameters = std::map<std::string, std::string, std::less<>>;

/// Finds the operation for a method and a path such as "/v2/accounts/{accountId}/templates".
class Router {
  public:
    using Operation = std::function<Answer(const Request&, const PathParameters&)>;

    void add(const std::string& method, const std::string& pattern, Operation operation);

    struct Match {
        const Operation* operation = nullptr; ///< null when nothing answers
        PathParameters parameters;
        std::string allowed; ///< methods known for the path, when only the method does not fit
    };
    Match match(const std::string& method, const std::string& path) const;

  private:
    struct Route {
        std::string method;
        std::vector<std::string> segments;
        Operation operation;
    };
    std::vector<Route> routes_;
};

} // namespace norvane::sandbox
