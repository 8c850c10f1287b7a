#include "sandbox/PrivateFile.h"

#include "sandbox/Text.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace norvane::sandbox {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, int error) {
    throw std::runtime_error("cannot write " + file.string() + ": " + std::strerror(error));
}

} // namespace

void makePrivateFolder(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    if (folder.empty() || fs::is_directory(folder)) return;
    makePrivateFolder(folder.parent_path());
    if (fs::create_directory(folder)) fs::permissions(folder, fs::perms::owner_all);
}

void writePrivateFile(const std::filesystem::path& file, std::string_view bytes) {
    const std::filesystem::path beside = file.string() + "." + randomHex(4) + ".tmp";
    const int descriptor = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0) fail(beside, errno);
    int error = 0;
    while (!bytes.empty() && error == 0) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) error = errno;
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (::close(descriptor) != 0 && error == 0) error = errno;
    if (error == 0 && ::rename(beside.c_str(), file.c_str()) != 0) error = errno;
    if (error == 0) return;
    ::unlink(beside.c_str());
    fail(file, error);
}

std::optional<std::string> readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::ostringstream text;
    text << stream.rdbuf();
    if (stream.bad() || text.fail()) return std::nullopt;
    return std::move(text).str();
}

} // namespace norvane::sandbox
