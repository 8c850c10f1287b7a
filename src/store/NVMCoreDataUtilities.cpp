#include "src/store/StoreErrorOf.h"

#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCoreDataUtilities.h>
#include <norvane/store/ObjectStore.h>

namespace norvane {

std::shared_ptr<void> NVMCoreDataUtilities::load(const ManagedObjectID& id, const RecordType& type,
                                                 Failure* error) {
    const auto store = ObjectStore::defaultStore();
    auto object = store ? store->defaultContext().objectErased(id, type)
                        : Result<std::shared_ptr<void>>(storeNotOpen());
    if (object) return std::move(object).value();
    if (error) *error = object.error();
    return nullptr;
}

} // namespace norvane
