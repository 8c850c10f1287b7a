#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace norvane {

/// One call that changes what is on disk, and what it did.
struct DiskCall {
    enum class Kind { Create, Write, Truncate, Sync, SyncFolder, Rename, Link, Unlink, Mark };
    Kind kind;
    std::string path; ///< below the layer's root; of a mark its text
    std::string to;   ///< the new name of a rename or a link
    std::int64_t offset = 0;
    std::string bytes;
};

/// Stands between this program, SQLite and everything else in it, and the disk: sees every call that changes
/// something below a folder, and may let it fail. One at a time.
class DiskLayer {
  public:
    /// Called before each call, the bytes of a write included. An errno other than 0 fails it; a write may be
    /// cut short first.
    using Fault = std::function<int(const DiskCall& call, std::size_t& size)>;

    explicit DiskLayer(std::filesystem::path root, Fault fault = {});
    ~DiskLayer();
    DiskLayer(const DiskLayer&) = delete;
    DiskLayer& operator=(const DiskLayer&) = delete;

    void mark(const std::string& text);
    /// From now on nothing fails.
    void heal();
    std::vector<DiskCall> calls() const;
};

/// While it lives nothing is really synced: the tests look at the calls, and the machine does not lose its
/// power.
class FreeSyncs {
  public:
    FreeSyncs();
    ~FreeSyncs();
};

/// What is on disk after some of the calls.
class DiskImage {
  public:
    void apply(const DiskCall& call);

    enum class After {
        Kill,      ///< the process ended: all that was called is there
        PowerLoss, ///< what was not synced is gone, names included
        TornWrite, ///< of what was not synced any part is there
    };
    /// Makes the folder hold the image and nothing else.
    void restore(const std::filesystem::path& root, After after, unsigned seed) const;

  private:
    struct File {
        std::string now;
        std::string synced;
        std::vector<DiskCall> unsynced;
    };
    using Names = std::map<std::string, std::size_t>;

    std::vector<File> files_;
    Names names_;
    Names syncedNames_;
};

} // namespace norvane
