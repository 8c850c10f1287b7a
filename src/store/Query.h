#pragma once

#include "src/store/Connection.h"
#include "src/store/Model.h"

#include <norvane/store/FetchRequest.h>

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// A fetch request as SQL. The text holds columns and question marks only; values are bound.
class Query {
  public:
    /// Throws NVMException for a column that the entity lacks.
    explicit Query(const FetchRequest& request);

    const Entity& entity() const { return *entity_; }
    std::vector<std::int64_t> rows(Connection& connection) const;
    std::size_t count(Connection& connection) const;
    std::vector<std::vector<Value>> properties(Connection& connection,
                                               const std::vector<std::string_view>& columns) const;

  private:
    void addCondition(const FetchRequest::Condition& condition);
    std::string checked(std::string_view column) const;
    Connection::Prepared prepare(Connection& connection, const std::string& selected) const;

    const Entity* entity_;
    std::string tail_; ///< from "FROM" on
    std::vector<Value> values_;
};

} // namespace norvane
