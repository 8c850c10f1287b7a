#pragma once

#include <string>
#include <vector>

#include "src/store/Connection.h"
#include "src/store/Sessions.h"

namespace norvane {

class ObjectStore;

/// The files that may be on disk without a row that names them: about to get one, or having lost theirs. Paths are
/// relative to the documents folder. To be called inside a transaction.
class FileJournal {
  public:
    explicit FileJournal(Connection& connection)
        : connection_(connection) {}

    void add(const std::string& path, const std::string& session);
    void remove(const std::string& path);

    struct Entry {
        std::string path;
        std::string session;
    };
    std::vector<Entry> entries();
    /// Whether a document's row names the file.
    bool isNamed(const std::string& path);

    /// Removes journalled files that have lost their last row, then their entries; outside a transaction. What
    /// it cannot do the next set-up does.
    static void removeDropped(ObjectStore& store, const std::vector<std::string>& paths);

  private:
    Connection& connection_;
};

/// Removes what ended sessions left: journalled files that no row names, half-written files, and attempts at
/// uploading envelopes that are gone. Only while the set-up lock is held.
Failure clearLeftovers(ObjectStore& store, const Session& session);

} // namespace norvane
