#include "src/store/Seal.h"

#include "src/store/RowCodec.h"
#include "src/store/Schema.h"
#include "src/store/Trees.h"

#include <norvane/platform/Files.h>

#include <SQLiteCpp/Column.h>
#include <sqlite3.h>

#include <cmath>
#include <cstring>

namespace norvane {

namespace {

/// The bytes that a seal is the digest of. Each part says how long it is, so that no two contents give the
/// same.
class Content {
  public:
    void addRow(const Entity& entity, const void* record) {
        part(entity.name());
        for (const Field* field : entity.attributes)
            attribute(*field, record);
    }
    void addOwned(const Entity& entity, const void* record) {
        for (const auto& child : entity.children) {
            const void* member = child.member->in(record);
            const ReferenceAccess& access = *child.member->reference;
            const std::size_t count = access.size(member);
            number(static_cast<std::int64_t>(count));
            for (std::size_t index = 0; index < count; ++index) {
                addRow(*child.entity, access.at(member, index));
                addOwned(*child.entity, access.at(member, index));
            }
        }
    }
    std::string digest() const { return sha256Hex(bytes_); }

  private:
    void number(std::int64_t value) { bytes_.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void part(std::string_view bytes) {
        number(static_cast<std::int64_t>(bytes.size()));
        bytes_.append(bytes);
    }
    void absent() { bytes_ += '\0'; }
    void present() { bytes_ += '\1'; }

    void attribute(const Field& field, const void* record) {
        switch (field.kind) {
        case FieldKind::Text:
            if (const auto& text = field.as<field::Text>(record)) return present(), part(*text);
            return absent();
        case FieldKind::Number:
            if (const auto& boxed = field.as<field::Number>(record)) return decimal(*boxed);
            return absent();
        case FieldKind::DateTime:
            if (const auto& date = field.as<field::Date>(record))
                return present(), number(date->time_since_epoch().count());
            return absent();
        case FieldKind::Bytes:
            if (const auto& bytes = field.as<field::Bytes>(record)) return present(), part(bytes->view());
            return absent();
        case FieldKind::Bool:
            return number(field.as<field::Bool>(record) ? 1 : 0);
        case FieldKind::Integer:
            return number(field.as<field::Integer>(record));
        case FieldKind::TextList:
            return list(field.as<field::TextList>(record));
        default:
            return;
        }
    }

    /// As SQLite keeps it: what is no number as nothing, and one zero.
    void decimal(double value) {
        if (std::isnan(value)) return absent();
        present();
        const double kept = value == 0 ? 0 : value;
        std::int64_t bits = 0;
        std::memcpy(&bits, &kept, sizeof bits);
        number(bits);
    }

    void list(const field::TextList& texts) {
        const auto kept = storedFormOf(texts);
        if (!kept) return absent();
        present();
        number(static_cast<std::int64_t>(kept->size()));
        for (const auto& text : *kept)
            part(text);
    }

    std::string bytes_;
};

} // namespace

std::string rowSealOf(const Entity& entity, const void* record) {
    Content row;
    row.addRow(entity, record);
    return row.digest();
}

std::string sealOf(const Entity& entity, const void* record) {
    Content owned;
    owned.addOwned(entity, record);
    return rowSealOf(entity, record) + owned.digest();
}

DamagedObject::DamagedObject(const Entity& entity, std::int64_t row)
    : SQLite::Exception(std::string(entity.name()) + " " + std::to_string(row) + " is not what was written",
                        SQLITE_CORRUPT) {}

Reseal::Root Reseal::rootOf(const Entity& entity, std::int64_t row) {
    if (entity.isRoot()) return {&entity, row};
    for (const auto& inverse : entity.inverses) {
        std::int64_t owner = 0;
        {
            const Connection::Prepared statement(connection_.prepare(
                "SELECT " + sqlName(inverse.column) + " FROM " + sqlName(entity.name()) + " WHERE _id = ?"));
            statement->bind(1, row);
            if (statement->executeStep()) owner = statement->getColumn(0).getInt64();
        }
        if (owner != 0) return rootOf(*inverse.owner, owner);
    }
    return {nullptr, 0};
}

void Reseal::aboutToChange(const Entity& entity, std::int64_t row) {
    const Root root = rootOf(entity, row);
    if (!root.first || !root.first->isSealed() || open_.contains(root)) return;
    loadTree(connection_, *root.first, root.second); // throws when it is damaged
    open_.insert(root);
}

void Reseal::seal(const Entity& entity, const void* record, std::int64_t row) {
    const auto statement = connection_.kept(entity.seal);
    statement->bind(1, sealOf(entity, record));
    statement->bind(2, row);
    statement->exec();
}

void Reseal::finish() {
    for (const auto& [entity, row] : open_)
        if (const auto object = loadTreeUnchecked(connection_, *entity, row))
            seal(*entity, object.get(), row);
    open_.clear();
}

} // namespace norvane
