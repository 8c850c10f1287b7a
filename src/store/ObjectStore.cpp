#include "src/store/Model.h"
#include "src/store/ObjectStoreCore.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreFile.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMMHWMigrationManager.h>
#include <norvane/store/ObjectStore.h>

#include <mutex>

namespace norvane {

namespace {

struct DefaultStore {
    std::mutex mutex; ///< guards `store`; held while it is being opened
    std::shared_ptr<ObjectStore> store;
};

DefaultStore& defaultSlot() {
    static DefaultStore slot;
    return slot;
}

std::string sentenceAbout(const std::filesystem::path& file, std::string_view what) {
    return "\"" + file.filename().string() + "\" " + std::string(what);
}

/// Makes an empty store where there is none; refuses what is not the kit's to use.
Failure prepareFile(const std::filesystem::path& file) {
    const auto identity = identifyStoreFile(file);
    if (!identity) return identity.error();
    if (identity->kind == StoreFileKind::Foreign) {
        return storeError(StoreError::NotAStore, sentenceAbout(file, "is no store of this kit."));
    }
    if (identity->kind == StoreFileKind::Store && identity->modelVersion > Model::kVersion) {
        return storeError(StoreError::NewerModel,
                          sentenceAbout(file, "was made by a later version of this kit."));
    }
    if (identity->kind == StoreFileKind::Store && identity->modelVersion < Model::kVersion) {
        return storeError(
            StoreError::OlderModel,
            sentenceAbout(file, "was made by an earlier version of this kit and is not migrated."));
    }
    if (auto error = protectStoreFile(file)) return error;
    return identity->kind == StoreFileKind::Store ? std::nullopt : createSchema(file, Model::kVersion);
}

} // namespace

ObjectStore::ObjectStore(std::unique_ptr<Core> core)
    : core_(std::move(core)) {}

ObjectStore::~ObjectStore() { close(); }

Result<std::shared_ptr<ObjectStore>> ObjectStore::open(const std::string& fileName) {
    const Platform& platform = Platform::current();
    const auto file = platform.files->supportFolder() / fileName;
    const auto settingUp = lockForSetUp(file);
    if (!settingUp) return settingUp.error();
    if (auto error = prepareFile(file)) return *error;
    auto session = Session::begin(file);
    if (!session) return session.error();
    std::shared_ptr<ObjectStore> store(new ObjectStore(std::make_unique<Core>(
        file, platform.executors->makeSerialQueue("com.norvane.store.save"), std::move(session).value())));
    store->core_->defaultContext = std::make_unique<ManagedObjectContext>(store);
    if (auto error = store->core_->clearLeftovers(*store)) return *error;
    store->core_->scrub(0); // what a process that was killed had removed
    return store;
}

std::shared_ptr<ObjectStore> ObjectStore::defaultStore() {
    DefaultStore& slot = defaultSlot();
    const std::lock_guard lock(slot.mutex);
    return slot.store;
}

Failure ObjectStore::setupDefaultStore(const std::string& fileName) {
    DefaultStore& slot = defaultSlot();
    const std::lock_guard lock(slot.mutex);
    const auto file = Platform::current().files->supportFolder() / fileName;
    if (slot.store && slot.store->isOpen() && slot.store->file() == file) return std::nullopt;
    auto opened = open(fileName);
    if (!opened) return opened.error();
    slot.store = std::move(opened).value();
    return std::nullopt;
}

void ObjectStore::closeDefaultStore() {
    std::shared_ptr<ObjectStore> store;
    {
        DefaultStore& slot = defaultSlot();
        const std::lock_guard lock(slot.mutex);
        store = std::move(slot.store);
        slot.store = nullptr;
    }
    if (store) store->close();
}

const std::filesystem::path& ObjectStore::file() const { return core_->file(); }
ManagedObjectContext& ObjectStore::defaultContext() { return *core_->defaultContext; }
bool ObjectStore::isOpen() const { return core_->isOpen(); }
void ObjectStore::removeEarlierStores() { Platform::current().files->remove(earlierStoresFolder(file())); }
void ObjectStore::scrub() { core_->scrub(Core::kScrubMilliseconds); }
void ObjectStore::close() { core_->close(); }

Failure ObjectStore::saveAndWait(const std::function<Failure(ManagedObjectContext&)>& block) {
    ManagedObjectContext context(shared_from_this());
    if (auto error = block(context)) return error;
    return context.save();
}

void ObjectStore::saveInBackground(std::function<Failure(ManagedObjectContext&)> block,
                                   std::function<void(Failure)> completion) {
    core_->saveQueue().async(
        [self = shared_from_this(), block = std::move(block), completion = std::move(completion)] {
            const Failure error = self->saveAndWait(block);
            if (completion) completion(error);
        });
}

Failure StoreWork::read(ObjectStore& store, const Work& work) {
    Failure error = store.core_->read(work);
    // The reader that was in the way of a scrub may have been this one.
    if (store.core_->takeOwedScrub()) {
        store.core_->saveQueue().async([weak = store.weak_from_this()] {
            if (const auto open = weak.lock()) open->core_->scrub(0);
        });
    }
    return error;
}
Failure StoreWork::write(ObjectStore& store, const Work& work) { return store.core_->write(work); }
const std::string& StoreWork::session(ObjectStore& store) { return store.core_->sessionIdentifier(); }

} // namespace norvane
