#include "src/platform/Adapters.h"
#include "src/platform/CredentialErrors.h"
#include "src/platform/SecretServiceConnection.h"

#include <string>

namespace norvane {

namespace {

const SecretSchema& schema() {
    static const SecretSchema made = [] {
        SecretSchema schema{};
        schema.name = "com.norvane.credentials";
        schema.flags = SECRET_SCHEMA_NONE;
        schema.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
        schema.attributes[1] = {"account", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return schema;
    }();
    return made;
}

struct SecretValueRelease {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};
using SecretValuePtr = std::unique_ptr<SecretValue, SecretValueRelease>;

struct HashTableRelease {
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};
using Attributes = std::unique_ptr<GHashTable, HashTableRelease>;

bool isText(std::string_view text) {
    return text.find('\0') == std::string_view::npos &&
           g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
}

/// One item, spoken of within one call.
struct ItemCall {
    SecretService* service;
    GHashTable* attributes;
    GCancellable* cancellable;
    std::string label;
};

/// The items of these attributes, of which only the first counts; an empty list when there is none.
Result<ObjectList> search(const ItemCall& call) {
    GError* error = nullptr;
    ObjectList items(secret_service_search_sync(call.service, &schema(), call.attributes, SECRET_SEARCH_NONE,
                                                call.cancellable, &error));
    if (error) return secretServiceError(GErrorPtr(error));
    return items;
}

/// The first item, unlocked; null when there is none.
Result<GObjectPtr<SecretItem>> unlockedItem(const ItemCall& call) {
    const auto items = search(call);
    if (!items) return items.error();
    if (!*items) return GObjectPtr<SecretItem>();
    GObjectPtr<SecretItem> item(SECRET_ITEM(g_object_ref((*items)->data)));
    if (secret_item_get_locked(item.get())) {
        if (auto error = unlock(call.service, item.get(), call.cancellable)) return *error;
    }
    return item;
}

Result<std::optional<Data>> fetchItem(const ItemCall& call) {
    const auto item = unlockedItem(call);
    if (!item) return item.error();
    if (!*item) return std::optional<Data>();
    GError* error = nullptr;
    if (!secret_item_load_secret_sync(item->get(), call.cancellable, &error)) {
        return secretServiceError(GErrorPtr(error));
    }
    const SecretValuePtr value(secret_item_get_secret(item->get()));
    if (!value)
        return credentialError(CredentialStoreError::Failed, "The keyring gave an item without its secret.");
    gsize size = 0;
    const gchar* bytes = secret_value_get(value.get(), &size);
    return std::optional<Data>(Data::secret(std::string(bytes, size)));
}

Failure saveItem(const ItemCall& call, const Data& secret) {
    const auto collection = defaultCollection(call.service, call.cancellable);
    if (!collection) return collection.error();
    if (secret_collection_get_locked(collection->get())) {
        if (auto error = unlock(call.service, collection->get(), call.cancellable)) return error;
    }
    // Other programs of the desktop show a secret only when it calls itself text.
    const char* type = isText(secret.view()) ? "text/plain" : "application/octet-stream";
    const SecretValuePtr value(secret_value_new(reinterpret_cast<const gchar*>(secret.data()),
                                                static_cast<gssize>(secret.size()), type));
    GError* error = nullptr;
    if (!secret_service_store_sync(call.service, &schema(), call.attributes, SECRET_COLLECTION_DEFAULT,
                                   call.label.c_str(), value.get(), call.cancellable, &error)) {
        return secretServiceError(GErrorPtr(error));
    }
    return std::nullopt;
}

Failure removeItem(const ItemCall& call) {
    const auto item = unlockedItem(call);
    if (!item) return item.error();
    if (!*item) return std::nullopt;
    GError* error = nullptr;
    secret_service_clear_sync(call.service, &schema(), call.attributes, call.cancellable, &error);
    if (error) return secretServiceError(GErrorPtr(error));
    return std::nullopt;
}

class SecretServiceCredentialStore final : public CredentialStore {
  public:
    explicit SecretServiceCredentialStore(std::chrono::milliseconds patience)
        : patience_(patience) {}

    Failure save(std::string_view service, std::string_view account, const Data& secret) override {
        return perform<Failure>(service, account,
                                [&](const ItemCall& call) { return saveItem(call, secret); });
    }
    Result<std::optional<Data>> fetch(std::string_view service, std::string_view account) override {
        return perform<Result<std::optional<Data>>>(service, account, fetchItem);
    }
    Failure remove(std::string_view service, std::string_view account) override {
        return perform<Failure>(service, account, removeItem);
    }

  private:
    template <class Answer, class Action>
    Answer perform(std::string_view service, std::string_view account, Action action) const {
        if (!isText(service) || !isText(account)) {
            return credentialError(CredentialStoreError::Failed, "A name of the credentials is no text.");
        }
        const Deadline deadline(patience_);
        const std::string serviceText(service), accountText(account);
        const Attributes attributes(secret_attributes_build(&schema(), "service", serviceText.c_str(),
                                                            "account", accountText.c_str(), nullptr));
        const auto attempt = [&]() -> Answer {
            const auto connection = connectToSecretService(deadline.cancellable());
            if (!connection) return connection.error();
            return action(ItemCall{connection->get(), attributes.get(), deadline.cancellable(), serviceText});
        };
        Answer answer = attempt();
        if (!mayBeStale(answer) || g_cancellable_is_cancelled(deadline.cancellable())) return answer;
        secret_service_disconnect();
        return attempt();
    }

    /// The connection is kept between calls; a service that was started anew meanwhile knows nothing of it.
    static bool mayBeStale(const NVMError& error) {
        return error.code != static_cast<std::int64_t>(CredentialStoreError::Locked);
    }
    static bool mayBeStale(const Failure& failure) { return failure && mayBeStale(*failure); }
    template <class T>
    static bool mayBeStale(const Result<T>& result) {
        return !result && mayBeStale(result.error());
    }

    const std::chrono::milliseconds patience_;
};

} // namespace

std::shared_ptr<CredentialStore> makeSecretServiceCredentialStore(std::chrono::milliseconds patience) {
    return std::make_shared<SecretServiceCredentialStore>(patience);
}

bool isSecretServiceAvailable() {
    const Deadline deadline(std::chrono::seconds(5));
    const auto service = connectToSecretService(deadline.cancellable());
    return service && defaultCollection(service->get(), deadline.cancellable());
}

} // namespace norvane
