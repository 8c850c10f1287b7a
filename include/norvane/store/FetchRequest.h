#pragma once

#include <norvane/platform/Value.h>
#include <norvane/record/Record.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace norvane {

/// What to fetch: one entity's rows that meet all conditions. Columns are attributes of the entity, or the
/// names of its inverse relationships, whose value is the row number of the owner. A column that the entity
/// lacks is a programming error: running the request throws NVMException.
class FetchRequest {
  public:
    enum class Match {
        Equal,             ///< a null value asks for absent ones
        NotEqual,          ///< absent ones are not equal to a value
        EqualIgnoringCase, ///< of ASCII letters
        NotEmpty,          ///< a text with at least one character; the value is not looked at
    };
    struct Condition {
        std::string_view column; ///< of static life
        Match match;
        Value value;
    };
    struct Order {
        std::string_view column;
        bool ascending;
    };

    explicit FetchRequest(const RecordType& entity)
        : entity_(&entity) {}

    FetchRequest& where(std::string_view column, Match match, Value value = {}) {
        conditions_.push_back({column, match, std::move(value)});
        return *this;
    }
    /// Without an order rows come in the order in which they were first saved.
    FetchRequest& orderBy(std::string_view column, bool ascending = true) {
        orders_.push_back({column, ascending});
        return *this;
    }
    FetchRequest& limitTo(std::size_t rows) {
        limit_ = rows;
        return *this;
    }

    const RecordType& entity() const { return *entity_; }
    const std::vector<Condition>& conditions() const { return conditions_; }
    const std::vector<Order>& orders() const { return orders_; }
    const std::optional<std::size_t>& limit() const { return limit_; }

  private:
    const RecordType* entity_;
    std::vector<Condition> conditions_;
    std::vector<Order> orders_;
    std::optional<std::size_t> limit_;
};

} // namespace norvane
