#include "src/platform/Adapters.h"
#include "src/platform/DurableFile.h"
#include "src/platform/FileLock.h"
#include "src/platform/SuiteCoding.h"

#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Url.h>

#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>
#include <map>
#include <mutex>

namespace norvane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestSuite = std::size_t{16} << 20;

using Suite = std::shared_ptr<const Dictionary>;

/// A suite's file is never changed, only replaced. So what was read from it holds as long as the name leads
/// to the same file, and a file that is kept open lends its number to no other.
struct CachedSuite {
    FileDescriptor file;
    struct stat status {};
    Suite suite;

    bool isCurrent(const struct stat& now) const {
        return suite && status.st_dev == now.st_dev && status.st_ino == now.st_ino &&
               status.st_size == now.st_size && status.st_mtim.tv_sec == now.st_mtim.tv_sec &&
               status.st_mtim.tv_nsec == now.st_mtim.tv_nsec;
    }
};

class FileUserDefaults final : public UserDefaults {
  public:
    FileUserDefaults(fs::path folder, std::shared_ptr<Log> log)
        : folder_(std::move(folder))
        , log_(std::move(log)) {}

    Value value(std::string_view suite, std::string_view key) const override {
        const Suite content = read(suite);
        const auto found = content->find(key);
        return found == content->end() ? Value() : found->second;
    }

    Dictionary all(std::string_view suite) const override { return *read(suite); }

    Failure setValue(std::string_view suite, std::string_view key, const Value& value) override {
        const auto lock = FileLock::acquire(lockPath(suite));
        if (!lock) return lock.error();
        const auto before = loadLocked(suite);
        if (!before) return before.error();
        Dictionary content = **before;
        if (value.isNull()) {
            if (content.erase(std::string(key)) == 0) return std::nullopt;
        } else {
            content.insert_or_assign(std::string(key), value);
        }
        const std::string text = encodeSuite(content);
        if (text.size() > kLargestSuite || decodeSuite(text) != content) {
            return NVMError::make(std::string(kFileErrorDomain), EINVAL,
                                  "This value cannot be kept as a setting: " + std::string(key));
        }
        return writeDurably(filePath(suite), text);
    }

  private:
    fs::path filePath(std::string_view suite) const { return folder_ / (percentEscaped(suite) + ".json"); }
    fs::path lockPath(std::string_view suite) const { return folder_ / (percentEscaped(suite) + ".lock"); }

    Suite read(std::string_view suite) const {
        auto content = load(suite);
        if (!content) {
            // Damaged, unless another process is faster: under the lock it is decided and put right.
            const auto lock = FileLock::acquire(lockPath(suite));
            content = lock ? loadLocked(suite) : Result<Suite>(lock.error());
        }
        if (content) return *content;
        log_->write(LogLevel::Warning,
                    "User defaults cannot be read: " + content.error().localizedDescription());
        return std::make_shared<const Dictionary>();
    }

    /// As `load`, but puts a damaged suite aside and goes on with an empty one.
    Result<Suite> loadLocked(std::string_view suite) const {
        auto content = load(suite);
        if (content || content.error().code != EBADMSG) return content;
        const fs::path file = filePath(suite);
        const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
        const fs::path aside = file.string() + ".damaged-" + formatIso8601(now);
        if (rename(file.c_str(), aside.c_str()) != 0) return fileError(errno, file);
        log_->write(LogLevel::Warning,
                    "Damaged user defaults were put aside as " + aside.filename().string());
        return std::make_shared<const Dictionary>();
    }

    /// EBADMSG when the file is no suite.
    Result<Suite> load(std::string_view suite) const {
        const fs::path path = filePath(suite);
        const std::lock_guard lock(mutex_);
        CachedSuite& cached = cache_[std::string(suite)];
        struct stat now {};
        if (stat(path.c_str(), &now) != 0) {
            if (errno != ENOENT) return fileError(errno, path);
            cached = CachedSuite();
            return std::make_shared<const Dictionary>();
        }
        if (cached.isCurrent(now)) return cached.suite;
        return loadInto(cached, path);
    }

    static Result<Suite> loadInto(CachedSuite& cached, const fs::path& path) {
        auto file = openForReading(path, true);
        if (!file) return file.error();
        struct stat status {};
        if (fstat(file->get(), &status) != 0) return fileError(errno, path);
        if (static_cast<std::size_t>(status.st_size) > kLargestSuite) return fileError(EBADMSG, path);
        std::string text(static_cast<std::size_t>(status.st_size), '\0');
        const auto count = readSome(*file, text.data(), text.size(), path);
        if (!count) return count.error();
        auto content = decodeSuite(std::string_view(text).substr(0, *count));
        if (!content) return fileError(EBADMSG, path);
        cached.file = std::move(*file);
        cached.status = status;
        cached.suite = std::make_shared<const Dictionary>(std::move(*content));
        return cached.suite;
    }

    const fs::path folder_;
    const std::shared_ptr<Log> log_;
    mutable std::mutex mutex_; ///< guards `cache_`
    mutable std::map<std::string, CachedSuite, std::less<>> cache_;
};

} // namespace

std::shared_ptr<UserDefaults> makeFileUserDefaults(std::filesystem::path folder, std::shared_ptr<Log> log) {
    return std::make_shared<FileUserDefaults>(std::move(folder), std::move(log));
}

} // namespace norvane
