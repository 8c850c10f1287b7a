#pragma once

#include <norvane/platform/Result.h>
#include <norvane/store/NVMManagedObject.h>

#include <memory>
#include <unordered_set>
#include <vector>

namespace norvane {

/// Brings objects from one thread to another: identifiers travel, objects are fetched anew.
class NVMCoreDataUtilities {
  public:
    NVMCoreDataUtilities() = delete;

    /// The identifiers of the saved ones among the objects.
    template <class T>
    static std::unordered_set<ManagedObjectID>
    managedObjectIDsForManagedObjects(const std::vector<std::shared_ptr<T>>& objects) {
        std::unordered_set<ManagedObjectID> ids;
        for (const auto& object : objects)
            if (object->objectID.isPermanent()) ids.insert(object->objectID);
        return ids;
    }

    /// The objects that the default context can load, as they are stored now; the others are skipped.
    /// `error`, if given, gets the last failure.
    template <class T>
    static std::vector<std::shared_ptr<T>>
    managedObjectsForManagedObjectIDs(const std::unordered_set<ManagedObjectID>& ids,
                                      Failure* error = nullptr) {
        std::vector<std::shared_ptr<T>> objects;
        for (const auto& id : ids)
            if (auto object = load(id, T::type(), error))
                objects.push_back(std::static_pointer_cast<T>(object));
        return objects;
    }

  private:
    static std::shared_ptr<void> load(const ManagedObjectID& id, const RecordType& type, Failure* error);
};

} // namespace norvane
