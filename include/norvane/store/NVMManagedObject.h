#pragma once

#include <norvane/record/Record.h>
#include <norvane/store/FetchRequest.h>

#include <compare>
#include <cstdint>
#include <functional>
#include <string_view>

namespace norvane {

/// Names a stored row; the only thing about an object that crosses threads. Permanent once the object is
/// saved.
struct ManagedObjectID {
    std::string_view entity; ///< of static life: a name of the model
    std::int64_t row = 0;    ///< 0 until the object is saved

    bool isPermanent() const { return row != 0; }
    friend auto operator<=>(const ManagedObjectID&, const ManagedObjectID&) = default;
};

/// The base of every entity. Two objects with one identifier are two copies of one row: a change shows in the
/// store, and in later fetches, once a context has saved the changed copy.
struct NVMManagedObject {
    ManagedObjectID objectID;
};

/// The members of an entity: its fields, its table, and a request for all of its rows.
#define NVMCD_ENTITY(R, FIELDS)                                                                              \
    NORVANE_RECORD(R, FIELDS)                                                                                \
    static ::norvane::FetchRequest fetchRequest() { return ::norvane::FetchRequest(type()); }

} // namespace norvane

template <>
struct std::hash<norvane::ManagedObjectID> {
    std::size_t operator()(const norvane::ManagedObjectID& id) const {
        return std::hash<std::string_view>()(id.entity) * 31 + std::hash<std::int64_t>()(id.row);
    }
};
