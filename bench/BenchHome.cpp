#include "bench/BenchHome.h"

#include <norvane/platform/Platform.h>

#include <cstdlib>
#include <stdexcept>

namespace norvane::bench {

namespace {

struct Home {
    std::filesystem::path folder;

    Home() {
        std::string name = (std::filesystem::temp_directory_path() / "norvane-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        folder = name;
        PlatformOptions options;
        options.home = folder;
        options.credentialStore = CredentialStoreKind::File;
        auto platform = Platform::complete({}, options);
        if (!platform) throw std::runtime_error(platform.error().localizedDescription());
        Platform::install(*std::move(platform));
    }
    ~Home() { std::filesystem::remove_all(folder); }
};

} // namespace

const std::filesystem::path& benchHome() {
    static const Home home;
    return home.folder;
}

} // namespace norvane::bench
