#pragma once

#include "src/store/Connection.h"
#include "src/store/Model.h"
#include "src/store/Seal.h"

#include <memory>
#include <vector>

namespace norvane {

/// Loads the object of the row with everything that it owns; null when the row is gone. Throws DamagedObject
/// when a seal does not fit.
std::shared_ptr<void> loadTree(Connection& connection, const Entity& entity, std::int64_t row);
std::shared_ptr<void> loadTreeUnchecked(Connection& connection, const Entity& entity, std::int64_t row);

/// Writes objects with everything that they own, inside the caller's transaction.
class TreeWriter {
  public:
    enum class Seals { Kept, None }; ///< none: for stores of models that have no seals
    explicit TreeWriter(Connection& connection, Seals seals = Seals::Kept)
        : connection_(connection)
        , reseal_(connection)
        , seals_(seals) {}

    void insert(const Entity& entity, void* record);
    /// Answers whether the row was there.
    bool update(const Entity& entity, void* record);
    bool updateAttributes(const Entity& entity, void* record,
                          const std::vector<std::string_view>& attributes);
    void remove(const Entity& entity, std::int64_t row);
    /// After the last change of the transaction.
    void finish() { reseal_.finish(); }
    /// Whether rows went, so that their content is to be scrubbed from the journal too.
    bool hasRemoved() const { return hasRemoved_; }
    void noteRemoval() { hasRemoved_ = true; }
    /// The transaction failed: takes back the identifiers that it gave.
    void forgetIdentifiers();

  private:
    struct Place {
        const Entity::Inverse* inverse;
        std::int64_t owner;
        std::int64_t position;
    };
    void insertOwned(const Entity& entity, void* record, const Place& place);
    void insertChildren(const Entity& entity, void* record);
    void updateChildren(const Entity& entity, void* record);
    void updateChild(const Entity::Child& child, void* record, std::int64_t owner);
    void setPosition(const Entity& entity, void* record, std::int64_t position);
    void updateRow(const Entity& entity, void* record);
    /// A document's row comes to name a file.
    void adoptFile(const Entity& entity, void* record);
    void take(const Entity& entity, void* record);

    Connection& connection_;
    Reseal reseal_;
    const Seals seals_;
    bool hasRemoved_ = false;
    std::int64_t ancestor_ = 0; ///< the envelope of the tree being written
    std::vector<NVMManagedObject*> identified_;
};

} // namespace norvane
