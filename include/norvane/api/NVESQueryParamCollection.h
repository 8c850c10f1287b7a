#pragma once

#include <string>
#include <vector>

namespace norvane {

/// A query parameter of several values, given to a request as `Value::object`.
struct NVESQueryParamCollection {
    std::vector<std::string> values;
    /// "multi" sends one pair a value; "csv", "tsv" and "pipes" join the values by ",", a tab or "|".
    std::string format = "csv";
};

} // namespace norvane
