#include "src/store/RowCodec.h"
#include "src/store/Trees.h"

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

std::shared_ptr<void> loadTree(Connection& connection, const Entity& entity, std::int64_t row) {
    auto record = entity.type->make();
    {
        const auto statement = connection.kept(entity.select);
        statement->bind(1, row);
        if (!statement->executeStep()) return nullptr;
        readRow(*statement, entity, record.get());
    }
    loadChildren(connection, entity, record.get());
    return record;
}

} // namespace norvane
