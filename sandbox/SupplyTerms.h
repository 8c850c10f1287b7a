#pragma once

#include <string>
#include <vector>

namespace norvane::sandbox {

struct SupplyArticle {
    std::string title;
    std::vector<std::string> clauses;
};

/// The articles of the supply contract, in order.
const std::vector<SupplyArticle>& supplyArticles();

} // namespace norvane::sandbox
