#include "src/platform/Adapters.h"
#include "src/platform/DurableFile.h"
#include "src/platform/FileLock.h"

#include <norvane/platform/Files.h>

#include <cerrno>

namespace norvane {

namespace {

constexpr std::string_view kSecretService = "secret-service\n";
constexpr std::string_view kFile = "file\n";

using Choice = Result<std::optional<CredentialStoreKind>>;

/// The kind written down by an earlier run; nothing in a fresh home.
Choice writtenKind(const std::filesystem::path& file) {
    const auto written = readWhole(file, 64);
    if (written && *written == kSecretService) return Choice(CredentialStoreKind::SecretService);
    if (written && *written == kFile) return Choice(CredentialStoreKind::File);
    if (written) return fileError(EBADMSG, file);
    if (written.error().code != ENOENT) return written.error();
    return Choice(std::nullopt);
}

/// The kind that an earlier run chose, or the one chosen, and written down, now. A choice that stands is read
/// without a lock, so that a home that cannot be written to keeps its store.
Result<CredentialStoreKind> rememberedKind(const std::filesystem::path& folder, CredentialStoreKind wanted) {
    const std::filesystem::path file = folder / "credential-store";
    if (const auto written = writtenKind(file); !written)
        return written.error();
    else if (*written)
        return **written;
    const auto lock = FileLock::acquire(folder / "credential-store.lock");
    if (!lock) return lock.error();
    if (const auto written = writtenKind(file); !written)
        return written.error();
    else if (*written)
        return **written;
    if (wanted == CredentialStoreKind::Automatic)
        wanted = isSecretServiceAvailable() ? CredentialStoreKind::SecretService : CredentialStoreKind::File;
    const bool isService = wanted == CredentialStoreKind::SecretService;
    if (auto error = writeDurably(file, isService ? kSecretService : kFile)) return *error;
    return wanted;
}

} // namespace

Result<std::shared_ptr<CredentialStore>> makeCredentialStore(CredentialStoreKind kind,
                                                             const ApplicationFolders& folders) {
    const auto remembered = rememberedKind(folders.defaults, kind);
    if (!remembered) return remembered.error();
    if (kind == CredentialStoreKind::Automatic) kind = *remembered;
    if (kind == CredentialStoreKind::SecretService) return makeSecretServiceCredentialStore();
    return makeFileCredentialStore(folders.support);
}

} // namespace norvane
