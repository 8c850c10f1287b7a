#pragma once

#include "src/store/Connection.h"
#include "src/store/Model.h"

#include <SQLiteCpp/Exception.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>

namespace norvane {

/// The digest of an object's own attributes. An object and what is read back of it give the same.
std::string rowSealOf(const Entity& entity, const void* record);
/// The same, followed by the digest of all that the object owns, by content and order.
std::string sealOf(const Entity& entity, const void* record);

/// What was read of a sealed row is not what was written: bits have changed behind the kit's back, where
/// SQLite itself notices nothing.
class DamagedObject : public SQLite::Exception {
  public:
    explicit DamagedObject(const Entity& entity, std::int64_t row);
};

/// Keeps the seals right in a transaction that changes single rows of what they cover.
class Reseal {
  public:
    explicit Reseal(Connection& connection)
        : connection_(connection) {}

    /// Before the row is changed or removed: what it belongs to must be sound, or DamagedObject is thrown.
    void aboutToChange(const Entity& entity, std::int64_t row);
    /// The object is written as it stands in memory.
    void seal(const Entity& entity, const void* record, std::int64_t row);
    /// After the changes.
    void finish();

  private:
    using Root = std::pair<const Entity*, std::int64_t>;
    Root rootOf(const Entity& entity, std::int64_t row);

    Connection& connection_;
    std::set<Root> open_;
};

} // namespace norvane
