#include "src/platform/Adapters.h"
#include "src/platform/DurableFile.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

namespace norvane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestRead = std::size_t{1} << 30;
constexpr std::size_t kPieceSize = std::size_t{256} << 10;

class Sha256 {
  public:
    Sha256() { EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr); }
    void add(const void* bytes, std::size_t size) { EVP_DigestUpdate(context_.get(), bytes, size); }
    std::string hexadecimal() {
        unsigned char digest[EVP_MAX_MD_SIZE];
        unsigned int size = 0;
        EVP_DigestFinal_ex(context_.get(), digest, &size);
        constexpr std::string_view kDigits = "0123456789abcdef";
        std::string text;
        for (unsigned int i = 0; i < size; ++i)
            text.append({kDigits[digest[i] >> 4], kDigits[digest[i] & 15]});
        return text;
    }

  private:
    struct Free {
        void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD_CTX, Free> context_{EVP_MD_CTX_new()};
};

/// Hands the file's bytes over piece by piece until the taker gives an error.
template <class Taker>
Failure readPieces(const FileDescriptor& file, const fs::path& path, Taker taker) {
    std::vector<char> piece(kPieceSize);
    for (;;) {
        const auto count = readSome(file, piece.data(), piece.size(), path);
        if (!count) return count.error();
        if (*count == 0) return std::nullopt;
        if (Failure error = taker(std::string_view(piece.data(), *count))) return error;
    }
}

Failure copyDurably(const fs::path& from, const fs::path& to) {
    const auto source = openForReading(from, false);
    if (!source) return source.error();
    auto target = PendingFile::create(to);
    if (!target) return target.error();
    if (auto error =
            readPieces(*source, from, [&](std::string_view piece) { return target->write(piece); })) {
        return error;
    }
    return target->publish();
}

/// Whether the two names cannot share one file, so that only a copy helps.
bool needsCopy(int code) { return code == EXDEV || code == EPERM || code == EMLINK || code == ENOTSUP; }

class LinuxFiles final : public Files {
  public:
    explicit LinuxFiles(ApplicationFolders folders)
        : folders_(std::move(folders)) {}

    fs::path documentsFolder() const override { return folders_.documents; }
    fs::path supportFolder() const override { return folders_.support; }
    fs::path cachesFolder() const override { return folders_.caches; }
    fs::path temporaryFolder() const override { return folders_.temporary; }

    Failure createFolder(const fs::path& folder) override {
        if (mkdir(folder.c_str(), 0700) == 0) return syncParent(folder);
        if (errno != EEXIST) return fileError(errno, folder);
        struct stat status {};
        if (lstat(folder.c_str(), &status) != 0) return fileError(errno, folder);
        if (!S_ISDIR(status.st_mode)) return fileError(ENOTDIR, folder);
        return std::nullopt;
    }

    Failure write(const fs::path& file, const Data& bytes) override {
        return writeDurably(file, bytes.view());
    }

    Failure linkOrCopy(const fs::path& from, const fs::path& to) override {
        auto linked = PendingFile::link(from, to);
        if (linked) return linked->publish();
        if (!needsCopy(static_cast<int>(linked.error().code))) return linked.error();
        return copyDurably(from, to);
    }

    Failure move(const fs::path& from, const fs::path& to) override {
        {
            const auto file = openForReading(from, false);
            if (!file) return file.error();
            if (fchmod(file->get(), 0600) != 0 || fsync(file->get()) != 0) return fileError(errno, from);
        }
        if (rename(from.c_str(), to.c_str()) != 0) {
            if (errno != EXDEV) return fileError(errno, to);
            if (auto error = copyDurably(from, to)) return error;
            if (unlink(from.c_str()) != 0) return fileError(errno, from);
        }
        if (auto error = syncParent(to)) return error;
        return syncParent(from);
    }

    Result<Data> read(const fs::path& file) const override {
        auto bytes = readWhole(file, kLargestRead);
        if (!bytes) return bytes.error();
        return Data(std::move(*bytes));
    }

    Result<std::string> sha256(const fs::path& file) const override {
        const auto source = openForReading(file, true);
        if (!source) return source.error();
        Sha256 digest;
        const auto failure = readPieces(*source, file, [&](std::string_view piece) -> Failure {
            digest.add(piece.data(), piece.size());
            return std::nullopt;
        });
        if (failure) return *failure;
        return digest.hexadecimal();
    }

    bool remove(const fs::path& path) override {
        std::error_code error;
        return fs::remove_all(path, error) > 0 && !error;
    }

  private:
    const ApplicationFolders folders_;
};

} // namespace

std::shared_ptr<Files> makeLinuxFiles(ApplicationFolders folders) {
    return std::make_shared<LinuxFiles>(std::move(folders));
}

std::string sha256Hex(std::string_view bytes) {
    Sha256 digest;
    digest.add(bytes.data(), bytes.size());
    return digest.hexadecimal();
}

} // namespace norvane
