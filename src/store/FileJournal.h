#pragma once

#include "src/store/Connection.h"
#include "src/store/Sessions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

class ObjectStore;
struct NVMCDDocument;

/// The files that may be on disk without a row that names them: about to get one, or having lost theirs.
/// Paths are relative to the documents folder. To be called inside a transaction.
class FileJournal {
  public:
    explicit FileJournal(Connection& connection)
        : connection_(connection) {}

    void add(const std::string& path, const std::string& session);
    void setDigest(const std::string& path, const std::string& sha256);
    /// A row is about to name the document's file: takes over the file's digest and strikes its name out.
    void adopt(NVMCDDocument& document);
    void remove(const std::string& path);

    struct Entry {
        std::string path;
        std::string session;
    };
    std::vector<Entry> entries();
    /// Whether a document's row names the file.
    bool isNamed(const std::string& path);
    /// Whether a row or the journal names it.
    bool isKnown(const std::string& path);
    /// The digest of the file as far as its row or the journal know it.
    std::optional<std::string> digest(const std::string& path);
    /// Whether a row of another owner than that envelope names the file.
    bool isNamedOutside(const std::string& path, std::int64_t envelopeRow);

    /// Removes the files unless a row names them, then strikes them out; outside a transaction. Files that
    /// cannot be removed for certain stay in the journal, for the next set-up.
    static void removeDropped(ObjectStore& store, const std::vector<std::string>& paths);

    /// The folder's files that neither a row nor the journal knows, as relative paths; half-written ones are
    /// left out.
    static std::vector<std::string> unknownFiles(ObjectStore& store, std::string_view folder);
    /// Removes the folder's files that neither a row nor the journal knows.
    static void removeUnknown(ObjectStore& store, std::string_view folder);

  private:
    Connection& connection_;
};

/// Removes what ended sessions left: journalled files that no row names, half-written files, and attempts at
/// uploading envelopes that are gone. Only while the set-up lock is held.
Failure clearLeftovers(ObjectStore& store, const Session& session);

} // namespace norvane
