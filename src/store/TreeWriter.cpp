#include "src/store/FileJournal.h"
#include "src/store/RowCodec.h"
#include "src/store/Schema.h"
#include "src/store/Trees.h"

#include <norvane/store/NVMCDEnvelopes.h>

#include <algorithm>
#include <set>

namespace norvane {

void TreeWriter::take(const Entity& entity, void* record) {
    NVMManagedObject& object = entity.object(record);
    object.objectID = {entity.name(), connection_.database().getLastInsertRowid()};
    identified_.push_back(&object);
}

void TreeWriter::forgetIdentifiers() {
    for (NVMManagedObject* object : identified_)
        object->objectID = {};
    identified_.clear();
}

void TreeWriter::insert(const Entity& entity, void* record) {
    {
        const auto statement = connection_.kept(entity.insert);
        bindAttributes(*statement, entity, record);
        statement->exec();
    }
    take(entity, record);
    const std::int64_t row = entity.object(record).objectID.row;
    ancestor_ = entity.type == &NVMCDEnvelopeDefinition::type() ? row : 0;
    insertChildren(entity, record);
    if (entity.isSealed() && seals_ == Seals::Kept) reseal_.seal(entity, record, row);
}

void TreeWriter::adoptFile(const Entity& entity, void* record) {
    if (entity.type == &NVMCDDocument::type())
        FileJournal(connection_).adopt(*static_cast<NVMCDDocument*>(record));
}

void TreeWriter::insertOwned(const Entity& entity, void* record, const Place& place) {
    adoptFile(entity, record);
    {
        const auto statement = connection_.kept(place.inverse->insert);
        int parameter = bindAttributes(*statement, entity, record);
        statement->bind(parameter++, place.owner);
        statement->bind(parameter++, place.position);
        if (!entity.ancestorColumn.empty() && ancestor_ != 0) statement->bind(parameter, ancestor_);
        statement->exec();
    }
    take(entity, record);
    insertChildren(entity, record);
}

void TreeWriter::insertChildren(const Entity& entity, void* record) {
    const std::int64_t row = entity.object(record).objectID.row;
    for (const auto& child : entity.children) {
        void* member = child.member->in(record);
        const ReferenceAccess& access = *child.member->reference;
        for (std::size_t index = 0, count = access.size(member); index < count; ++index)
            insertOwned(*child.entity, access.at(member, index),
                        {&child.entity->inverses[child.inverse], row, static_cast<std::int64_t>(index)});
    }
}

bool TreeWriter::update(const Entity& entity, void* record) {
    const std::int64_t row = entity.object(record).objectID.row;
    {
        const auto statement = connection_.kept(entity.select);
        statement->bind(1, row);
        if (!statement->executeStep()) return false;
    }
    if (!entity.isRoot()) reseal_.aboutToChange(entity, row);
    ancestor_ = entity.type == &NVMCDEnvelopeDefinition::type() ? row : 0;
    updateRow(entity, record);
    updateChildren(entity, record);
    if (entity.isSealed() && seals_ == Seals::Kept) reseal_.seal(entity, record, row);
    return true;
}

void TreeWriter::updateRow(const Entity& entity, void* record) {
    if (entity.update.empty()) return;
    adoptFile(entity, record);
    const auto statement = connection_.kept(entity.update);
    const int parameter = bindAttributes(*statement, entity, record);
    statement->bind(parameter, entity.object(record).objectID.row);
    statement->exec();
}

void TreeWriter::setPosition(const Entity& entity, void* record, std::int64_t position) {
    const auto statement = connection_.kept(entity.place);
    statement->bind(1, position);
    statement->bind(2, entity.object(record).objectID.row);
    statement->exec();
}

void TreeWriter::updateChildren(const Entity& entity, void* record) {
    const std::int64_t row = entity.object(record).objectID.row;
    for (const auto& child : entity.children)
        updateChild(child, record, row);
}

void TreeWriter::updateChild(const Entity::Child& child, void* record, std::int64_t owner) {
    const Entity& entity = *child.entity;
    const Entity::Inverse& inverse = entity.inverses[child.inverse];
    std::set<std::int64_t> stored;
    {
        const auto statement = connection_.kept(inverse.selectRows);
        statement->bind(1, owner);
        while (statement->executeStep())
            stored.insert(statement->getColumn(0).getInt64());
    }
    void* member = child.member->in(record);
    const ReferenceAccess& access = *child.member->reference;
    const auto count = access.size(member);
    for (std::size_t index = 0; index < count; ++index) {
        void* owned = access.at(member, index);
        const auto position = static_cast<std::int64_t>(index);
        // An identifier that is not among the owner's rows is a stale copy of a row that is gone, or
        // another's.
        if (stored.erase(entity.object(owned).objectID.row) == 0) {
            insertOwned(entity, owned, {&inverse, owner, position});
            continue;
        }
        updateRow(entity, owned);
        setPosition(entity, owned, position);
        updateChildren(entity, owned);
    }
    for (const std::int64_t row : stored) {
        const auto statement = connection_.kept(entity.remove);
        statement->bind(1, row);
        statement->exec();
        hasRemoved_ = true;
    }
}

void TreeWriter::remove(const Entity& entity, std::int64_t row) {
    if (!entity.isRoot()) reseal_.aboutToChange(entity, row);
    const auto statement = connection_.kept(entity.remove);
    statement->bind(1, row);
    if (statement->exec() != 0) hasRemoved_ = true;
}

bool TreeWriter::updateAttributes(const Entity& entity, void* record,
                                  const std::vector<std::string_view>& attributes) {
    const std::int64_t row = entity.object(record).objectID.row;
    reseal_.aboutToChange(entity, row);
    std::string assignments;
    for (const auto name : attributes)
        assignments += (assignments.empty() ? "" : ", ") + sqlName(name) + " = ?";
    const Connection::Prepared statement(
        connection_.prepare("UPDATE " + sqlName(entity.name()) + " SET " + assignments + " WHERE _id = ?"));
    int parameter = 1;
    for (const auto name : attributes)
        bindAttribute(*statement, parameter++, *entity.attribute(name), record);
    statement->bind(parameter, row);
    return statement->exec() != 0;
}

} // namespace norvane
