#include "src/store/FileJournal.h"
#include "src/store/Query.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"
#include "src/store/Trees.h"

#include <norvane/platform/NVMException.h>
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
            });
        } catch (const ObjectGone&) {
            error = objectIsGone();
        }
        if (error && writer) writer->forgetIdentifiers();
        return error;
    }

  private:
    const std::vector<Change>& changes_;
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
        for (const std::int64_t row : query.rows(connection))
            objects.push_back(loadTree(connection, query.entity(), row));
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
    changes_->changes.push_back([entity, row = id.row](TreeWriter&, Connection& connection) {
        const auto statement = connection.kept(entity->remove);
        statement->bind(1, row);
        statement->exec();
    });
}

void ManagedObjectContext::removeAll(const RecordType& type) {
    changes_->changes.push_back(
        [&entity = Model::current().entity(type)](TreeWriter&, Connection& connection) {
            connection.kept(entity.removeAll)->exec();
        });
}

void ManagedObjectContext::removeMatching(const FetchRequest& request) {
    changes_->changes.push_back(
        [query = Query(request)](TreeWriter&, Connection& connection) { query.remove(connection); });
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
    if (auto error = Transaction(changes.changes).run(*store)) return error;
    FileJournal::removeDropped(*store, changes.droppedFiles);
    return std::nullopt;
}

void StoreWork::join(ManagedObjectContext& context, Work work) {
    context.changes_->changes.push_back(
        [work = std::move(work)](TreeWriter&, Connection& connection) { work(connection); });
}

} // namespace norvane
