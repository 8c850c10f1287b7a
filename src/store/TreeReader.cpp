#include "src/store/RowCodec.h"
#include "src/store/Trees.h"

#include <SQLiteCpp/Column.h>

#include <optional>

namespace norvane {

namespace {

void readRow(SQLite::Statement& statement, const Entity& entity, void* record) {
    entity.object(record).objectID = {entity.name(), statement.getColumn(0).getInt64()};
    readAttributes(statement, 1, entity, record);
}

void loadChildren(Connection& connection, const Entity& entity, void* record);

/// The rows of a level are read to the end before the next level, so each statement has one user at a time.
void loadChild(Connection& connection, const Entity::Child& child, std::int64_t owner, void* member) {
    const Entity& entity = *child.entity;
    const ReferenceAccess& access = *child.member->reference;
    {
        const auto statement = connection.kept(entity.inverses[child.inverse].select);
        statement->bind(1, owner);
        while (statement->executeStep()) {
            if (child.member->kind == FieldKind::Record && access.present(member)) break;
            readRow(*statement, entity, access.emplace(member));
        }
    }
    if (entity.children.empty()) return;
    for (std::size_t index = 0, count = access.size(member); index < count; ++index)
        loadChildren(connection, entity, access.at(member, index));
}

void loadChildren(Connection& connection, const Entity& entity, void* record) {
    const std::int64_t row = entity.object(record).objectID.row;
    for (const auto& child : entity.children)
        loadChild(connection, child, row, child.member->in(record));
}

} // namespace

namespace {

std::shared_ptr<void> load(Connection& connection, const Entity& entity, std::int64_t row, bool checked) {
    auto record = entity.type->make();
    std::optional<std::string> seal;
    {
        const auto statement = connection.kept(entity.select);
        statement->bind(1, row);
        if (!statement->executeStep()) return nullptr;
        readRow(*statement, entity, record.get());
        const int sealColumn = static_cast<int>(entity.attributes.size()) + 1;
        if (checked && entity.isSealed() && !statement->isColumnNull(sealColumn))
            seal = statement->getColumn(sealColumn).getString();
    }
    loadChildren(connection, entity, record.get());
    if (seal && *seal != sealOf(entity, record.get())) throw DamagedObject(entity, row);
    return record;
}

} // namespace

std::shared_ptr<void> loadTree(Connection& connection, const Entity& entity, std::int64_t row) {
    return load(connection, entity, row, true);
}

std::shared_ptr<void> loadTreeUnchecked(Connection& connection, const Entity& entity, std::int64_t row) {
    return load(connection, entity, row, false);
}

} // namespace norvane
