#pragma once

#include <norvane/platform/Result.h>
#include <norvane/store/FetchRequest.h>
#include <norvane/store/NVMManagedObject.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace norvane {

class ObjectStore;

/// A view of the store with changes of its own. Fetches answer what is saved, never the context's own unsaved
/// changes; objects are copies, with everything that they own. Changes are kept in memory until `save` writes
/// all of them in one transaction, so nothing of the store is locked in between. Any thread may fetch; one
/// thread at a time may change and save.
class ManagedObjectContext {
  public:
    explicit ManagedObjectContext(const std::shared_ptr<ObjectStore>& store);
    ~ManagedObjectContext();
    ManagedObjectContext(const ManagedObjectContext&) = delete;
    ManagedObjectContext& operator=(const ManagedObjectContext&) = delete;

    /// Null when the store is gone; everything gives `StoreError::NotOpen` then.
    std::shared_ptr<ObjectStore> store() const { return store_.lock(); }

    // Reading. A list that was stored empty reads back as absent.

    template <class T>
    Result<std::vector<std::shared_ptr<T>>> fetch(const FetchRequest& request) const {
        auto found = fetchErased(request, T::type());
        if (!found) return found.error();
        std::vector<std::shared_ptr<T>> objects;
        objects.reserve(found->size());
        for (auto& object : *found)
            objects.push_back(std::static_pointer_cast<T>(std::move(object)));
        return objects;
    }
    /// Null when nothing meets the request.
    template <class T>
    Result<std::shared_ptr<T>> fetchFirst(FetchRequest request) const {
        auto found = fetchErased(request.limitTo(1), T::type());
        if (!found) return found.error();
        return found->empty() ? nullptr : std::static_pointer_cast<T>(std::move(found->front()));
    }
    /// Null when the row is gone.
    template <class T>
    Result<std::shared_ptr<T>> objectWithID(const ManagedObjectID& id) const {
        auto found = objectErased(id, T::type());
        if (!found) return found.error();
        return std::static_pointer_cast<T>(std::move(*found));
    }
    Result<std::vector<ManagedObjectID>> fetchIDs(const FetchRequest& request) const;
    Result<std::size_t> count(const FetchRequest& request) const;
    /// The given columns of each row, in order, without loading objects. Absent ones are null.
    Result<std::vector<std::vector<Value>>>
    fetchProperties(const FetchRequest& request, const std::vector<std::string_view>& columns) const;

    // Changing.

    /// Adds the object and all that it owns; `save` gives them their identifiers. An entity that others own
    /// is inserted with its owner: by itself it throws NVMException.
    template <class T>
    void insert(std::shared_ptr<T> object) {
        insertErased(T::type(), std::move(object));
    }
    /// Makes the stored row and all that it owns like the object: owned objects that the row lacks are added,
    /// those that the object no longer holds are removed. A row that is gone fails the save.
    template <class T>
    void update(std::shared_ptr<T> object) {
        updateErased(T::type(), std::move(object), {});
    }
    /// Writes these attributes of the row alone.
    template <class T>
    void updateAttributes(std::shared_ptr<T> object, const std::vector<std::string_view>& attributes) {
        updateErased(T::type(), std::move(object), attributes);
    }
    /// Removes the row and all that it owns. A row that is gone is no error.
    void remove(const ManagedObjectID& id);
    /// Removes every row of the entity.
    void removeAll(const RecordType& entity);
    /// Removes every row that meets the request when `save` runs.
    void removeMatching(const FetchRequest& request);
    /// Removes the document file at that relative path after the save, unless a row still names it then.
    void dropFile(const std::string& path);

    bool hasChanges() const;
    void rollback(); ///< forgets the changes
    /// Writes the changes in the order in which they were made, in one transaction. After an error the store
    /// is as it was and the changes are forgotten; objects to insert have no identifiers then.
    Failure save();

  private:
    friend class StoreWork;
    friend class NVMCoreDataUtilities;
    struct Changes;
    using Erased = std::shared_ptr<void>;

    Result<std::vector<Erased>> fetchErased(const FetchRequest& request, const RecordType& type) const;
    Result<Erased> objectErased(const ManagedObjectID& id, const RecordType& type) const;
    void insertErased(const RecordType& type, Erased object);
    void updateErased(const RecordType& type, Erased object, std::vector<std::string_view> attributes);

    std::weak_ptr<ObjectStore> store_;
    std::unique_ptr<Changes> changes_;
};

} // namespace norvane
