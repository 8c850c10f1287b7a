#pragma once

#include "src/store/FileJournal.h"
#include "src/store/Sessions.h"
#include "src/store/StoreWork.h"

#include <norvane/platform/Executors.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/ObjectStore.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace norvane {

/// The connections of an open store: one that writes, and as many that read as there are threads reading at
/// once.
class ObjectStore::Core {
  public:
    Core(std::filesystem::path file, std::shared_ptr<TaskQueue> saveQueue, Session session);

    const std::filesystem::path& file() const { return file_; }
    const std::string& sessionIdentifier() const { return sessionIdentifier_; }
    Failure clearLeftovers(ObjectStore& store) { return norvane::clearLeftovers(store, *session_); }
    /// How long a removal waits for readers before it leaves the scrubbing for later.
    static constexpr int kScrubMilliseconds = 100;
    TaskQueue& saveQueue() { return *saveQueue_; }
    bool isOpen() const { return open_; }

    Failure read(const StoreWork::Work& work);
    Failure write(const StoreWork::Work& work);
    /// Empties the journal. While readers are in the way it stays owed.
    void scrub(int busyMilliseconds);
    /// Whether the journal is still to be emptied; the caller that gets a yes is to try again.
    bool takeOwedScrub() { return scrubOwed_.exchange(false); }
    void close();

    std::unique_ptr<ManagedObjectContext> defaultContext; ///< set once, before anybody else knows the store

  private:
    std::unique_ptr<Connection> borrowReader();
    void giveBack(std::unique_ptr<Connection> reader);

    const std::filesystem::path file_;
    const std::shared_ptr<TaskQueue> saveQueue_;
    const std::string sessionIdentifier_;
    std::atomic<bool> open_ = true;
    std::atomic<bool> scrubOwed_ = false;

    std::mutex writing_; ///< guards the two below
    std::unique_ptr<Connection> writer_;
    std::optional<Session> session_;

    std::mutex reading_; ///< guards `idleReaders_`
    std::vector<std::unique_ptr<Connection>> idleReaders_;
};

} // namespace norvane
