#include "src/platform/Adapters.h"
#include "src/platform/CredentialErrors.h"
#include "src/platform/DurableFile.h"
#include "src/platform/FileLock.h"
#include "src/platform/SealedItems.h"

#include <norvane/platform/Files.h>

#include <sodium.h>

#include <cerrno>

namespace norvane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestStore = std::size_t{16} << 20;

SecretBytes secretBytes(std::string_view text) { return {text.begin(), text.end()}; }

std::string_view viewOf(const SecretBytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

NVMError failed(const NVMError& cause) {
    return credentialError(CredentialStoreError::Failed, "The stored credentials cannot be reached.",
                           cause.localizedDescription());
}

NVMError damaged(std::string cause) {
    return credentialError(CredentialStoreError::Damaged, "The stored credentials are damaged.",
                           std::move(cause));
}

/// Two files: the sealed items and, apart from them, the key. What cannot be opened stays as it is.
class FileCredentialStore final : public CredentialStore {
  public:
    explicit FileCredentialStore(const fs::path& folder)
        : itemsFile_(folder / "credentials.sealed")
        , keyFile_(folder / "credentials.key")
        , lockFile_(folder / "credentials.lock")
        , ready_(sodium_init() >= 0) {}

    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        return change([&](CredentialItems& items) {
            items.insert_or_assign({secretBytes(service), secretBytes(account)}, secretBytes(secret.view()));
            return true;
        });
    }

    Failure remove(std::string_view service, std::string_view account) override {
        return change([&](CredentialItems& items) {
            return items.erase({secretBytes(service), secretBytes(account)}) > 0;
        });
    }

    Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) override {
        const auto lock = FileLock::acquire(lockFile_);
        if (!lock) return failed(lock.error());
        const auto content = load();
        if (!content) return content.error();
        const auto found = content->items.find({secretBytes(service), secretBytes(account)});
        if (found == content->items.end()) return std::optional<Data>();
        return std::optional<Data>(Data::secret(std::string(viewOf(found->second))));
    }

  private:
    struct Content {
        SecretBytes key; ///< empty before the first item
        CredentialItems items;
    };

    template <class Change>
    Failure change(Change apply) {
        const auto lock = FileLock::acquire(lockFile_);
        if (!lock) return failed(lock.error());
        auto content = load();
        if (!content) return content.error();
        if (!apply(content->items)) return std::nullopt;
        if (content->key.empty()) {
            content->key.resize(kSealKeySize);
            randombytes_buf(content->key.data(), kSealKeySize);
            if (const auto error = writeDurably(keyFile_, viewOf(content->key))) return failed(*error);
        }
        const SecretBytes sealed = sealItems(content->items, content->key);
        if (sealed.size() > kLargestStore) {
            return credentialError(CredentialStoreError::Failed,
                                   "The credentials are too large to be stored.");
        }
        if (const auto error = writeDurably(itemsFile_, viewOf(sealed))) return failed(*error);
        return std::nullopt;
    }

    Result<Content> load() const {
        if (!ready_) return credentialError(CredentialStoreError::Failed, "Encryption is not available.");
        auto key = readIfThere(keyFile_);
        if (!key) return key.error();
        const auto sealed = readIfThere(itemsFile_);
        if (!sealed) return sealed.error();
        Content content;
        if (*key) {
            content.key = secretBytes(**key);
            sodium_memzero((*key)->data(), (*key)->size());
            if (content.key.size() != kSealKeySize) return damaged("The key has the wrong size.");
        }
        if (!*sealed) return content;
        if (!*key) return damaged("The key is missing.");
        auto items = openItems(**sealed, content.key);
        if (!items) return damaged("The file does not fit its key.");
        content.items = std::move(*items);
        return content;
    }

    static Result<std::optional<std::string>> readIfThere(const fs::path& file) {
        auto bytes = readWhole(file, kLargestStore);
        if (bytes) return std::optional(std::move(*bytes));
        if (bytes.error().code == ENOENT) return std::optional<std::string>();
        return failed(bytes.error());
    }

    const fs::path itemsFile_;
    const fs::path keyFile_;
    const fs::path lockFile_;
    const bool ready_;
};

} // namespace

std::shared_ptr<CredentialStore> makeFileCredentialStore(std::filesystem::path folder) {
    return std::make_shared<FileCredentialStore>(folder);
}

} // namespace norvane
