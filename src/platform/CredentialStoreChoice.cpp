#include "src/platform/Adapters.h"
#include "src/platform/DurableFile.h"
#include "src/platform/FileLock.h"

#include <norvane/platform/Files.h>

#include <cerrno>

namespace norvane {

namespace {

constexpr std::string_view kSecretService = "secret-service\n";
constexpr std::string_view kFile = "file\n";

/// The kind that an earlier run chose, or the one chosen, and written down, now.
Result<CredentialStoreKind> rememberedKind(const std::filesystem::path& folder) {
    const auto lock = FileLock::acquire(folder / "credential-store.lock");
    if (!lock) return lock.error();
    const std::filesystem::path file = folder / "credential-store";
    const auto remembered = readWhole(file, 64);
    if (remembered && *remembered == kSecretService) return CredentialStoreKind::SecretService;
    if (remembered && *remembered == kFile) return CredentialStoreKind::File;
    if (remembered) return fileError(EBADMSG, file);
    if (remembered.error().code != ENOENT) return remembered.error();
    const bool isOffered = isSecretServiceAvailable();
    if (auto error = writeDurably(file, isOffered ? kSecretService : kFile)) return *error;
    return isOffered ? CredentialStoreKind::SecretService : CredentialStoreKind::File;
}

} // namespace

Result<std::shared_ptr<CredentialStore>> makeCredentialStore(CredentialStoreKind kind,
                                                             const ApplicationFolders& folders) {
    if (kind == CredentialStoreKind::Automatic) {
        const auto remembered = rememberedKind(folders.defaults);
        if (!remembered) return remembered.error();
        kind = *remembered;
    }
    if (kind == CredentialStoreKind::SecretService) return makeSecretServiceCredentialStore();
    return makeFileCredentialStore(folders.support);
}

} // namespace norvane
