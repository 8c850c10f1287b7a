#include "src/api/MultipartBody.h"

#include "src/platform/AsciiText.h"

#include <norvane/api/NVESErrors.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace norvane {
namespace {

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"')
            result += "%22";
        else
            result += c;
    }
    return result + '"';
}

/// What tells that a file was written to or replaced.
bool isSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

NVMError changed(const std::filesystem::path& file) {
    return NVMError::make(std::string(kTransportErrorDomain),
                          static_cast<std::int64_t>(TransportError::FileError),
                          "The file " + file.filename().string() + " changed while it was sent.");
}

NVMError unreadable(const std::filesystem::path& file, int cause) {
    return NVMError::make(std::string(kRequestErrorDomain), cause,
                          "The file " + file.filename().string() +
                              " cannot be read: " + std::strerror(cause) + ".",
                          std::string(kUnreadableFileReason));
}

} // namespace

MultipartBody::~MultipartBody() {
    if (file_ >= 0) ::close(file_);
}

Failure MultipartBody::addPart(const Parameters& disposition, std::string_view contentType,
                               const Data& content) {
    if (auto error = addHead(disposition, contentType)) return error;
    add(content);
    add(Data(std::string("\r\n")));
    return std::nullopt;
}

Failure MultipartBody::addFile(const Parameters& disposition, std::string_view contentType,
                               const std::filesystem::path& file) {
    FilePiece piece{file, {}};
    if (::stat(file.c_str(), &piece.status) != 0) return unreadable(file, errno);
    if (!S_ISREG(piece.status.st_mode)) return unreadable(file, EINVAL);
    if (::access(file.c_str(), R_OK) != 0) return unreadable(file, errno);
    if (auto error = addHead(disposition, contentType)) return error;
    size_ += static_cast<std::uint64_t>(piece.status.st_size);
    pieces_.emplace_back(std::move(piece));
    add(Data(std::string("\r\n")));
    return std::nullopt;
}

void MultipartBody::finish() { add(Data("--" + boundary_ + "--\r\n")); }

Failure MultipartBody::addHead(const Parameters& disposition, std::string_view contentType) {
    std::string head = "--" + boundary_ + "\r\nContent-Disposition: form-data";
    for (const auto& [name, value] : disposition) {
        if (std::any_of(value.begin(), value.end(), isAsciiControl))
            return NVMError::make(std::string(kRequestErrorDomain), 0,
                                  "The " + name + " of a part holds control characters.",
                                  std::string(kInvalidHeaderReason));
        head += "; " + name + "=" + inQuotes(value);
    }
    if (!contentType.empty()) head.append("\r\nContent-Type: ").append(contentType);
    add(Data(head + "\r\n\r\n"));
    return std::nullopt;
}

void MultipartBody::add(Data bytes) {
    size_ += bytes.size();
    pieces_.emplace_back(std::move(bytes));
}

Result<std::size_t> MultipartBody::read(char* buffer, std::size_t capacity) {
    std::size_t filled = 0;
    while (filled < capacity && piece_ < pieces_.size()) {
        if (const auto* bytes = std::get_if<Data>(&pieces_[piece_])) {
            const std::string_view rest = bytes->view().substr(position_);
            const std::size_t count = std::min(rest.size(), capacity - filled);
            std::copy_n(rest.data(), count, buffer + filled);
            filled += count;
            position_ += count;
            if (count == rest.size()) nextPiece();
        } else {
            auto count = readFile(std::get<FilePiece>(pieces_[piece_]), buffer + filled, capacity - filled);
            if (!count) return count;
            filled += *count;
        }
    }
    return filled;
}

Result<std::size_t> MultipartBody::readFile(const FilePiece& piece, char* buffer, std::size_t capacity) {
    if (auto error = openFile(piece)) return *error;
    const std::uint64_t left = static_cast<std::uint64_t>(piece.status.st_size) - position_;
    std::size_t count = 0;
    if (left > 0) {
        const ssize_t got = ::read(file_, buffer, std::min<std::uint64_t>(left, capacity));
        if (got < 0 && errno == EINTR) return std::size_t{0};
        if (got <= 0) return changed(piece.path);
        count = static_cast<std::size_t>(got);
    }
    position_ += count;
    if (count == left) {
        struct stat now {};
        if (::fstat(file_, &now) != 0 || !isSameFile(now, piece.status)) return changed(piece.path);
        nextPiece();
    }
    return count;
}

Failure MultipartBody::openFile(const FilePiece& piece) {
    if (file_ >= 0) return std::nullopt;
    file_ = ::open(piece.path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat now {};
    if (file_ < 0 || ::fstat(file_, &now) != 0 || !isSameFile(now, piece.status)) return changed(piece.path);
    return std::nullopt;
}

void MultipartBody::nextPiece() {
    if (file_ >= 0) ::close(file_);
    file_ = -1;
    position_ = 0;
    ++piece_;
}

} // namespace norvane
