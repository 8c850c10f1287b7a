#pragma once

#include <norvane/platform/Result.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace norvane {

class ManagedObjectContext;

/// The store: entities in one SQLite file, the document files beside it. Any thread may call. Several
/// processes may have one store open.
class ObjectStore : public std::enable_shared_from_this<ObjectStore> {
  public:
    /// The file of the kit's own store, in the support folder.
    static constexpr std::string_view kFileName = "NorvaneSDK.sqlite";

    /// Opens the store in the platform's support folder, makes it when there is none, and clears away what
    /// processes that ended amid a write left. A file that is no store of the kit, or that a later kit made,
    /// is left untouched and gives an error. A process opens a file once at a time.
    static Result<std::shared_ptr<ObjectStore>> open(const std::string& fileName = std::string(kFileName));
    ~ObjectStore();

    /// The store of the process: null before `setupDefaultStore` and after `closeDefaultStore`.
    static std::shared_ptr<ObjectStore> defaultStore();
    /// Opens the process's store. Does nothing when it is open already.
    static Failure setupDefaultStore(const std::string& fileName = std::string(kFileName));
    static void closeDefaultStore();

    const std::filesystem::path& file() const;

    /// The context that everybody reads from and that the user's own removals go through. Its changes are for
    /// one thread at a time, as in every context.
    ManagedObjectContext& defaultContext();

    /// Runs the block with a context of its own on the store's save queue and saves the context, unless the
    /// block gives an error. The completion runs on the queue afterwards, exactly once, with the error or
    /// nothing. Saves go one after another.
    void saveInBackground(std::function<Failure(ManagedObjectContext&)> block,
                          std::function<void(Failure)> completion);
    /// The same at once, on the calling thread.
    Failure saveAndWait(const std::function<Failure(ManagedObjectContext&)>& block);

    /// Brings the journal into the file and empties it, so that removed texts cannot be read from it. A save
    /// that removed something does so by itself. While others read it waits a moment, then tries again after
    /// later reads, and at the next set-up.
    void scrub();
    /// Removes the stores of earlier models that migrations kept aside.
    void removeEarlierStores();

    /// Waits for the saves that have begun and closes the file. From then on everything gives the error
    /// `StoreError::NotOpen`.
    void close();
    bool isOpen() const;

  private:
    friend class StoreWork;
    class Core;
    explicit ObjectStore(std::unique_ptr<Core> core);
    std::unique_ptr<Core> core_;
};

} // namespace norvane
