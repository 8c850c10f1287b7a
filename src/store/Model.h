#pragma once

#include <norvane/store/NVMManagedObject.h>

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// How one entity is stored: a table named after it, a column an attribute, a column an inverse relationship.
/// Entities live for ever.
struct Entity {
    /// A relationship to what a row owns. Exactly one inverse column of an owned row is set.
    struct Child {
        const Field* member;
        const Entity* entity;
        std::size_t inverse; ///< index into `entity->inverses`
    };
    struct Inverse {
        std::string_view column;
        const Entity* owner;
        std::string insert;     ///< parameters: the attributes, the owner, the position, the ancestor if any
        std::string select;     ///< rows of an owner in order: the row, then the attributes
        std::string selectRows; ///< the same without the attributes
    };

    const RecordType* type;
    NVMManagedObject& (*object)(void* record);
    std::vector<const Field*> attributes;
    std::vector<Inverse> inverses;
    std::vector<Child> children;
    /// Recipients also name the envelope that they stand in; empty elsewhere.
    std::string_view ancestorColumn;

    std::string insert; ///< of entities that nothing owns; parameters: the attributes
    std::string update; ///< parameters: the attributes, the row
    std::string place;  ///< parameters: the position, the row
    std::string select; ///< parameter: the row; gives the row, the attributes, the seal if sealed
    std::string remove; ///< parameter: the row
    std::string removeAll;
    std::string seal;            ///< of sealed entities; parameters: the seal, the row
    std::string selectedColumns; ///< "_id" and the attributes, quoted

    std::string_view name() const { return type->name(); }
    bool isRoot() const { return inverses.empty(); }
    /// Whether its rows carry a seal over all that they own.
    bool isSealed() const { return isRoot() && !children.empty(); }
    const Field* attribute(std::string_view name) const;
    bool hasColumn(std::string_view column) const;
};

/// The object model of the store.
class Model {
  public:
    static constexpr int kVersion = 2;
    static constexpr std::string_view kName = "NorvaneSDK";

    static const Model& current();

    const std::vector<const Entity*>& entities() const { return order_; }
    const Entity&
    entity(const RecordType& type) const; ///< throws NVMException for a record that is no entity
    const Entity* find(std::string_view name) const;

  private:
    Model();
    std::vector<const Entity*> order_;
};

} // namespace norvane
