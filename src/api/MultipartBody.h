#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/HttpSession.h>

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace norvane {

/// A form of parts. Parts from files are read from disk as they are sent; a file that is not what it was when
/// it was added ends the request with an error, so that no half document is taken for a whole one.
class MultipartBody final : public HttpBody {
  public:
    using Parameters = std::vector<std::pair<std::string, std::string>>;

    /// The boundary must be unpredictable, so that nobody can have put it into a document.
    explicit MultipartBody(std::string boundary)
        : boundary_(std::move(boundary)) {}
    ~MultipartBody() override;

    /// A part of disposition "form-data" with these parameters, in their order; no "Content-Type" when that
    /// is empty. An error says what cannot go into a header.
    Failure addPart(const Parameters& disposition, std::string_view contentType, const Data& content);
    /// The same with the bytes of a file, or an error when it cannot be read.
    Failure addFile(const Parameters& disposition, std::string_view contentType,
                    const std::filesystem::path& file);
    /// To be called once, after the last part.
    void finish();

    std::string contentType() const { return "multipart/form-data; boundary=" + boundary_; }
    std::uint64_t size() const override { return size_; }
    Result<std::size_t> read(char* buffer, std::size_t capacity) override;

  private:
    struct FilePiece {
        std::filesystem::path path;
        struct stat status;
    };
    using Piece = std::variant<Data, FilePiece>;

    Failure addHead(const Parameters& disposition, std::string_view contentType);
    void add(Data bytes);
    Result<std::size_t> readFile(const FilePiece& piece, char* buffer, std::size_t capacity);
    Failure openFile(const FilePiece& piece);
    void nextPiece();

    const std::string boundary_;
    std::vector<Piece> pieces_;
    std::uint64_t size_ = 0;
    std::size_t piece_ = 0;      ///< the one being read
    std::uint64_t position_ = 0; ///< in it
    int file_ = -1;              ///< of the piece being read
};

} // namespace norvane
