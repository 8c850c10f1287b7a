#include "src/store/FileJournal.h"
#include "src/store/Query.h"
#include "src/store/Seal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"
#include "src/store/Trees.h"

#include <norvane/platform/NVMException.h>
#include <norvane/platform/Platform.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/ObjectStore.h>

#include <utility>

namespace norvane {

namespace {

/// Ends a transaction because a row to change is gone.
struct ObjectGone {};

using Change = std::function<void(TreeWriter&, Connection&)>;

NVMError objectIsGone() {
    return storeError(StoreError::ObjectGone, "What was to be changed was removed meanwhile.");
}

/// What the work reads on one of the store's connections.
template <class T, class Work>
Result<T> readFrom(const std::weak_ptr<ObjectStore>& weakStore, const Work& work) {
    const auto store = weakStore.lock();
    if (!store) return storeNotOpen();
    T result{};
    if (auto error = StoreWork::read(*store, [&](Connection& connection) { work(connection, result); }))
        return *error;
    return result;
}

/// One damaged object does not take the others of a list along.
void leaveOut(const DamagedObject& damaged) {
    if (const auto log = Platform::current().log)
        log->write(LogLevel::Error, "store: left out of a list: " + std::string(damaged.what()));
}

/// The changes, until the transaction has taken them all.
class Transaction {
  public:
    explicit Transaction(const std::vector<Change>& changes)
        : changes_(changes) {}

    Failure run(ObjectStore& store) {
        std::optional<TreeWriter> writer;
        Failure error;
        try {
            error = StoreWork::write(store, [&](Connection& connection) {
                writer.emplace(connection);
                for (const auto& change : changes_)
                    change(*writer, connection);
                writer->finish();
            });
        } catch (const ObjectGone&) {
            error = objectIsGone();
        }
        if (error && writer) writer->forgetIdentifiers();
        hasRemoved_ = writer && writer->hasRemoved();
        return error;
    }
    bool hasRemoved() const { return hasRemoved_; }

  private:
    const std::vector<Change>& changes_;
    bool hasRemoved_ = false;
};

} // namespace

struct ManagedObjectContext::Changes {
    std::vector<Change> changes;
    std::vector<std::string> droppedFiles;
};

ManagedObjectContext::ManagedObjectContext(const std::shared_ptr<ObjectStore>& store)
    : store_(store)
    , changes_(std::make_unique<Changes>()) {}

ManagedObjectContext::~ManagedObjectContext() = default;

Result<std::vector<ManagedObjectContext::Erased>>
ManagedObjectContext::fetchErased(const FetchRequest& request, const RecordType& type) const {
    const Query query(request);
    if (query.entity().type != &type)
        throw NVMException("InvalidFetchRequest", "a request of another entity");
    return readFrom<std::vector<Erased>>(store_, [&](Connection& connection, std::vector<Erased>& objects) {
        for (const std::int64_t row : query.rows(connection)) {
            try {
                objects.push_back(loadTree(connection, query.entity(), row));
            } catch (const DamagedObject& damaged) {
                if (request.limit() == 1) throw;
                leaveOut(damaged);
            }
        }
    });
}

Result<ManagedObjectContext::Erased> ManagedObjectContext::objectErased(const ManagedObjectID& id,
                                                                        const RecordType& type) const {
    return readFrom<Erased>(store_, [&](Connection& connection, Erased& object) {
        if (id.entity == type.name()) object = loadTree(connection, Model::current().entity(type), id.row);
    });
}

Result<std::vector<ManagedObjectID>> ManagedObjectContext::fetchIDs(const FetchRequest& request) const {
    using IDs = std::vector<ManagedObjectID>;
    const Query query(request);
    return readFrom<IDs>(store_, [&](Connection& connection, IDs& ids) {
        for (const std::int64_t row : query.rows(connection))
            ids.push_back({query.entity().name(), row});
    });
}

Result<std::size_t> ManagedObjectContext::count(const FetchRequest& request) const {
    const Query query(request);
    return readFrom<std::size_t>(
        store_, [&](Connection& connection, std::size_t& count) { count = query.count(connection); });
}

Result<std::vector<std::vector<Value>>>
ManagedObjectContext::fetchProperties(const FetchRequest& request,
                                      const std::vector<std::string_view>& columns) const {
    using Rows = std::vector<std::vector<Value>>;
    const Query query(request);
    return readFrom<Rows>(
        store_, [&](Connection& connection, Rows& rows) { rows = query.properties(connection, columns); });
}

void ManagedObjectContext::insertErased(const RecordType& type, Erased object) {
    const Entity& entity = Model::current().entity(type);
    if (!entity.isRoot())
        throw NVMException("InvalidInsert", "inserted without owner: " + std::string(type.name()));
    changes_->changes.push_back([&entity, object = std::move(object)](TreeWriter& writer, Connection&) {
        writer.insert(entity, object.get());
    });
}

void ManagedObjectContext::updateErased(const RecordType& type, Erased object,
                                        std::vector<std::string_view> attributes) {
    const Entity& entity = Model::current().entity(type);
    for (const auto name : attributes)
        if (!entity.attribute(name)) throw NVMException("InvalidUpdate", "no attribute " + std::string(name));
    changes_->changes.push_back([&entity, object = std::move(object),
                                 attributes = std::move(attributes)](TreeWriter& writer, Connection&) {
        const bool there = attributes.empty() ? writer.update(entity, object.get())
                                              : writer.updateAttributes(entity, object.get(), attributes);
        if (!there) throw ObjectGone{};
    });
}

void ManagedObjectContext::remove(const ManagedObjectID& id) {
    const Entity* entity = Model::current().find(id.entity);
    if (!entity) throw NVMException("InvalidObjectID", "no entity " + std::string(id.entity));
    changes_->changes.push_back(
        [entity, row = id.row](TreeWriter& writer, Connection&) { writer.remove(*entity, row); });
}

void ManagedObjectContext::removeAll(const RecordType& type) {
    changes_->changes.push_back(
        [&entity = Model::current().entity(type)](TreeWriter& writer, Connection& connection) {
            if (connection.kept(entity.removeAll)->exec() != 0) writer.noteRemoval();
        });
}

void ManagedObjectContext::removeMatching(const FetchRequest& request) {
    changes_->changes.push_back([query = Query(request)](TreeWriter& writer, Connection& connection) {
        for (const std::int64_t row : query.rows(connection))
            writer.remove(query.entity(), row);
    });
}

void ManagedObjectContext::dropFile(const std::string& path) {
    const auto store = store_.lock();
    if (!store) return;
    StoreWork::join(*this, [path, session = StoreWork::session(*store)](Connection& connection) {
        FileJournal(connection).add(path, session);
    });
    changes_->droppedFiles.push_back(path);
}

bool ManagedObjectContext::hasChanges() const { return !changes_->changes.empty(); }

void ManagedObjectContext::rollback() { *changes_ = {}; }

Failure ManagedObjectContext::save() {
    const Changes changes = std::exchange(*changes_, {});
    if (changes.changes.empty()) return std::nullopt;
    const auto store = store_.lock();
    if (!store) return storeNotOpen();
    Transaction transaction(changes.changes);
    if (auto error = transaction.run(*store)) return error;
    FileJournal::removeDropped(*store, changes.droppedFiles);
    if (transaction.hasRemoved()) store->scrub();
    return std::nullopt;
}

void StoreWork::join(ManagedObjectContext& context, Work work) {
    context.changes_->changes.push_back(
        [work = std::move(work)](TreeWriter&, Connection& connection) { work(connection); });
}

} // namespace norvane
