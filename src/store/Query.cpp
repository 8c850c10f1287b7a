#include "src/store/Query.h"

#include "src/store/RowCodec.h"
#include "src/store/Schema.h"

#include <norvane/platform/NVMException.h>

namespace norvane {

Query::Query(const FetchRequest& request)
    : entity_(&Model::current().entity(request.entity()))
    , tail_(" FROM " + sqlName(entity_->name())) {
    for (const auto& condition : request.conditions())
        addCondition(condition);
    tail_ += " ORDER BY ";
    for (const auto& order : request.orders())
        tail_ += checked(order.column) + (order.ascending ? ", " : " DESC, ");
    tail_ += "_id";
    if (request.limit()) tail_ += " LIMIT " + std::to_string(*request.limit());
}

std::string Query::checked(std::string_view column) const {
    if (!entity_->hasColumn(column)) {
        throw NVMException("InvalidFetchRequest",
                           std::string(entity_->name()) + " has no column " + std::string(column));
    }
    return sqlName(column);
}

void Query::addCondition(const FetchRequest::Condition& condition) {
    const std::string column = checked(condition.column);
    tail_ += tail_.find(" WHERE ") == std::string::npos ? " WHERE " : " AND ";
    switch (condition.match) {
    // "=" where it will do: an index on the column's own values is of use to it alone.
    case FetchRequest::Match::Equal:
        tail_ += column + (condition.value.isNull() ? " IS ?" : " = ?");
        break;
    case FetchRequest::Match::NotEqual:
        tail_ += column + " IS NOT ?";
        break;
    case FetchRequest::Match::EqualIgnoringCase:
        tail_ += column + " = ? COLLATE NOCASE";
        break;
    case FetchRequest::Match::NotEmpty:
        tail_ += "length(" + column + ") > 0";
        return;
    }
    values_.push_back(condition.value);
}

Connection::Prepared Query::prepare(Connection& connection, const std::string& selected) const {
    auto& statement = connection.prepare(selected + tail_);
    int parameter = 1;
    for (const Value& value : values_)
        bindValue(statement, parameter++, value);
    return Connection::Prepared(statement);
}

std::vector<std::int64_t> Query::rows(Connection& connection) const {
    std::vector<std::int64_t> rows;
    const auto statement = prepare(connection, "SELECT _id");
    while (statement->executeStep())
        rows.push_back(statement->getColumn(0).getInt64());
    return rows;
}

std::size_t Query::count(Connection& connection) const {
    const auto statement = prepare(connection, "SELECT count(*)");
    statement->executeStep();
    return static_cast<std::size_t>(statement->getColumn(0).getInt64());
}

std::vector<std::vector<Value>> Query::properties(Connection& connection,
                                                  const std::vector<std::string_view>& columns) const {
    std::string selected;
    std::vector<FieldKind> kinds;
    for (const auto column : columns) {
        selected += (selected.empty() ? "SELECT " : ", ") + checked(column);
        const Field* attribute = entity_->attribute(column);
        kinds.push_back(attribute ? attribute->kind : FieldKind::Integer);
    }
    std::vector<std::vector<Value>> rows;
    const auto statement = prepare(connection, selected);
    while (statement->executeStep()) {
        auto& row = rows.emplace_back();
        row.reserve(columns.size());
        for (std::size_t index = 0; index < columns.size(); ++index)
            row.push_back(readValue(*statement, static_cast<int>(index), kinds[index]));
    }
    return rows;
}

} // namespace norvane
