#include "src/store/ObjectStoreCore.h"

#include "src/store/StoreErrorOf.h"

#include <sqlite3.h>

namespace norvane {

ObjectStore::Core::Core(std::filesystem::path file, std::shared_ptr<TaskQueue> saveQueue, Session session)
    : file_(std::move(file))
    , saveQueue_(std::move(saveQueue))
    , sessionIdentifier_(session.identifier())
    , session_(std::move(session)) {}

std::unique_ptr<Connection> ObjectStore::Core::borrowReader() {
    {
        const std::lock_guard lock(reading_);
        if (!idleReaders_.empty()) {
            auto reader = std::move(idleReaders_.back());
            idleReaders_.pop_back();
            return reader;
        }
    }
    return std::make_unique<Connection>(file_, Connection::Use::Reading);
}

void ObjectStore::Core::giveBack(std::unique_ptr<Connection> reader) {
    const std::lock_guard lock(reading_);
    if (open_) idleReaders_.push_back(std::move(reader));
}

Failure ObjectStore::Core::read(const StoreWork::Work& work) {
    if (!open_) return storeNotOpen();
    std::unique_ptr<Connection> reader;
    try {
        reader = borrowReader();
        reader->run("BEGIN"); // everything that is read is of one moment
        work(*reader);
        reader->run("COMMIT");
    } catch (const SQLite::Exception& exception) {
        return storeErrorOf(exception, reader ? reader->handle() : nullptr); // the connection goes with it
    }
    giveBack(std::move(reader));
    return std::nullopt;
}

Failure ObjectStore::Core::write(const StoreWork::Work& work) {
    const std::lock_guard lock(writing_);
    if (!open_) return storeNotOpen();
    try {
        if (!writer_) writer_ = std::make_unique<Connection>(file_, Connection::Use::Writing);
        WriteTransaction transaction(*writer_);
        work(*writer_);
        transaction.commit();
        return std::nullopt;
    } catch (const SQLite::Exception& exception) {
        return storeErrorOf(exception, writer_ ? writer_->handle() : nullptr);
    }
}

void ObjectStore::Core::scrub(int busyMilliseconds) {
    const std::lock_guard lock(writing_);
    if (!open_) return;
    try {
        if (!writer_) writer_ = std::make_unique<Connection>(file_, Connection::Use::Writing);
    } catch (const SQLite::Exception&) {
        scrubOwed_ = true;
        return;
    }
    sqlite3_busy_timeout(writer_->handle(), busyMilliseconds);
    scrubOwed_ = sqlite3_wal_checkpoint_v2(writer_->handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                                           nullptr) != SQLITE_OK;
    sqlite3_busy_timeout(writer_->handle(), Connection::kBusyMilliseconds);
}

void ObjectStore::Core::close() {
    std::vector<std::unique_ptr<Connection>> readers;
    {
        const std::lock_guard lock(reading_);
        open_ = false;
        readers.swap(idleReaders_);
    }
    readers.clear();
    const std::lock_guard lock(writing_);
    writer_.reset(); // the last connection brings the journal into the file
    session_.reset();
}

} // namespace norvane
