#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace norvane {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "norvane-test-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no folder could be made for the test");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code left;
    std::filesystem::remove_all(path_, left);
}

std::filesystem::path TemporaryFolder::file(std::string_view name, std::string_view content) const {
    const auto file = path_ / name;
    if (!(std::ofstream(file, std::ios::binary) << content << std::flush))
        throw std::runtime_error("no file could be written for the test");
    return file;
}

} // namespace norvane
