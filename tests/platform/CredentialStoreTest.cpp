#include "src/platform/Adapters.h"
#include "tests/platform/PrivateKeyring.h"
#include "tests/support/FakeCredentialStore.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace norvane {
namespace {

namespace fs = std::filesystem;

using StoreMaker = std::shared_ptr<CredentialStore> (*)(fs::path folder);

std::int64_t codeOf(CredentialStoreError error) { return static_cast<std::int64_t>(error); }

class CredentialStoreContract : public ::testing::TestWithParam<StoreMaker> {
  protected:
    TemporaryFolder folder_;
    std::shared_ptr<CredentialStore> store_ = GetParam()(folder_.path());
};

TEST_P(CredentialStoreContract, KeepsBytesByServiceAndAccount) {
    const Data binary(std::string("\0\xff"
                                  "a\0",
                                  4));
    EXPECT_EQ(*store_->fetch("contract", "none"), std::nullopt);
    ASSERT_FALSE(store_->save("contract", "Zoë", binary));
    ASSERT_FALSE(store_->save("contract", "other", Data("2")));
    ASSERT_FALSE(store_->save("contract.other", "Zoë", Data("3")));
    EXPECT_EQ(*store_->fetch("contract", "Zoë"), binary);
    ASSERT_FALSE(store_->save("contract", "Zoë", Data("a longer secret than the one before")));
    EXPECT_EQ(*store_->fetch("contract", "Zoë"), Data("a longer secret than the one before"));
    EXPECT_FALSE(store_->remove("contract", "Zoë"));
    EXPECT_FALSE(store_->remove("contract", "Zoë"));
    EXPECT_EQ(*store_->fetch("contract", "Zoë"), std::nullopt);
    EXPECT_EQ(*store_->fetch("contract", "other"), Data("2"));
    EXPECT_EQ(*store_->fetch("contract.other", "Zoë"), Data("3"));
    EXPECT_FALSE(store_->remove("contract", "other"));
    EXPECT_FALSE(store_->remove("contract.other", "Zoë"));
}

TEST_P(CredentialStoreContract, KeepsAnEmptySecretApartFromNone) {
    ASSERT_FALSE(store_->save("contract", "empty", Data()));
    const auto fetched = store_->fetch("contract", "empty");
    ASSERT_TRUE(fetched.ok());
    EXPECT_EQ(*fetched, Data());
    EXPECT_FALSE(store_->remove("contract", "empty"));
}

INSTANTIATE_TEST_SUITE_P(File, CredentialStoreContract, ::testing::Values(&makeFileCredentialStore));
INSTANTIATE_TEST_SUITE_P(Fake, CredentialStoreContract,
                         ::testing::Values([](fs::path) -> std::shared_ptr<CredentialStore> {
                             return std::make_shared<FakeCredentialStore>();
                         }));
INSTANTIATE_TEST_SUITE_P(SecretService, CredentialStoreContract, ::testing::Values([](fs::path) {
                             PrivateKeyring::shared();
                             return makeSecretServiceCredentialStore();
                         }));

TEST(SecretServiceCredentialStore, SaysThatTheKeyringIsLockedAndFindsItsItemsLater) {
    auto& keyring = PrivateKeyring::shared();
    const auto store = makeSecretServiceCredentialStore(std::chrono::seconds(2));
    ASSERT_FALSE(store->save("locked", "account", Data("secret")));
    keyring.lock();
    const auto fetched = store->fetch("locked", "account");
    ASSERT_FALSE(fetched.ok());
    EXPECT_EQ(fetched.error().code, codeOf(CredentialStoreError::Locked));
    const auto saved = store->save("locked", "account", Data("new"));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->code, codeOf(CredentialStoreError::Locked));
    keyring.restart();
    EXPECT_EQ(*store->fetch("locked", "account"), Data("secret"));
    EXPECT_FALSE(store->remove("locked", "account"));
}

int fetchWithoutBus(const std::vector<std::string>&) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    if (isSecretServiceAvailable()) return 1;
    const auto fetched = makeSecretServiceCredentialStore()->fetch("a", "b");
    if (fetched || fetched.error().code != codeOf(CredentialStoreError::Unavailable)) return 2;
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    unsetenv("XDG_RUNTIME_DIR");
    return makeSecretServiceCredentialStore()->save("a", "b", Data("c")) ? 0 : 3;
}
const TestRole kWithoutBus("fetch-without-bus", fetchWithoutBus);

TEST(SecretServiceCredentialStore, IsUnavailableWithoutABus) {
    EXPECT_EQ(ChildProcess::inRole("fetch-without-bus", {}).wait(), 0);
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(FileCredentialStore, ShowsNothingOfWhatItKeeps) {
    const TemporaryFolder folder;
    const auto store = makeFileCredentialStore(folder.path());
    ASSERT_FALSE(store->save("visible.service", "visible-account", Data("visible-secret")));
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        EXPECT_EQ(contentOf(entry.path()).find("visible"), std::string::npos) << entry.path();
        EXPECT_EQ(fs::status(entry.path()).permissions(), fs::perms(0600)) << entry.path();
    }
    EXPECT_EQ(*makeFileCredentialStore(folder.path())->fetch("visible.service", "visible-account"),
              Data("visible-secret"));
}

TEST(FileCredentialStore, RefusesATamperedFileAndLeavesItAsItIs) {
    const TemporaryFolder folder;
    const auto store = makeFileCredentialStore(folder.path());
    ASSERT_FALSE(store->save("service", "account", Data("secret")));
    const fs::path file = folder.path() / "credentials.sealed";
    const fs::path key = folder.path() / "credentials.key";
    const std::string sealed = contentOf(file), keyBytes = contentOf(key);
    const auto expectDamaged = [&](const std::string& what) {
        const std::string before = contentOf(file);
        const auto fetched = store->fetch("service", "account");
        ASSERT_FALSE(fetched.ok()) << what;
        EXPECT_EQ(fetched.error().code, codeOf(CredentialStoreError::Damaged)) << what;
        EXPECT_TRUE(store->save("service", "new", Data("new"))) << what;
        EXPECT_TRUE(store->remove("service", "account")) << what;
        EXPECT_EQ(contentOf(file), before) << what;
    };
    for (const std::size_t at : {std::size_t{0}, std::size_t{10}, std::size_t{40}, sealed.size() - 1}) {
        std::string tampered = sealed;
        tampered[at] = static_cast<char>(tampered[at] ^ 1);
        folder.file("credentials.sealed", tampered);
        expectDamaged("byte " + std::to_string(at));
    }
    folder.file("credentials.sealed", sealed.substr(0, sealed.size() / 2));
    expectDamaged("truncated");
    folder.file("credentials.sealed", "");
    expectDamaged("empty");
    folder.file("credentials.sealed", sealed);
    fs::remove(key);
    expectDamaged("without its key");
    EXPECT_FALSE(fs::exists(key));
    folder.file("credentials.key", keyBytes);
    EXPECT_EQ(*store->fetch("service", "account"), Data("secret"));
}

TEST(FileCredentialStore, LosesNothingThatSeveralThreadsSave) {
    const TemporaryFolder folder;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            const auto store = makeFileCredentialStore(folder.path());
            for (int i = 0; i < 20; ++i) {
                EXPECT_FALSE(store->save("service", std::to_string(100 * thread + i), Data("x")));
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    const auto store = makeFileCredentialStore(folder.path());
    for (int thread = 0; thread < 4; ++thread) {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(*store->fetch("service", std::to_string(100 * thread + i)), Data("x"));
        }
    }
}

/// Exits with 1 for Secret Service, 2 for the file, 3 when asking the chosen store fails as it must without
/// one.
int chooseStore(const std::vector<std::string>& arguments) {
    PlatformOptions options;
    options.home = arguments.at(0);
    ApplicationFolders folders = applicationFolders(options);
    if (makeFolders(folders)) return 10;
    if (arguments.at(1) == "without-bus") {
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        unsetenv("XDG_RUNTIME_DIR");
    }
    const bool isNamed = arguments.size() > 2 && arguments[2] == "file";
    const auto store =
        makeCredentialStore(isNamed ? CredentialStoreKind::File : CredentialStoreKind::Automatic, folders);
    if (!store) return 11;
    const auto saved = (*store)->save("chosen", "account", Data("secret"));
    if (saved) return saved->code == codeOf(CredentialStoreError::Unavailable) ? 3 : 12;
    return fs::exists(folders.support / "credentials.sealed") ? 2 : 1;
}
const TestRole kChooser("choose-store", chooseStore);

TEST(CredentialStoreChoice, IsMadeOnceAndKeptInOtherSurroundings) {
    PrivateKeyring::shared();
    const TemporaryFolder withBus, withoutBus, named;
    const auto choose = [](const TemporaryFolder& home, const std::string& surroundings,
                           const std::string& kind = "automatic") {
        return ChildProcess::inRole("choose-store", {home.path(), surroundings, kind}).wait();
    };
    EXPECT_EQ(choose(withBus, "with-bus"), 1);
    EXPECT_EQ(choose(withBus, "without-bus"), 3);
    EXPECT_EQ(choose(withBus, "with-bus"), 1);
    EXPECT_EQ(choose(withoutBus, "without-bus"), 2);
    EXPECT_EQ(choose(withoutBus, "with-bus"), 2);
    EXPECT_EQ(choose(named, "with-bus", "file"), 2);
    EXPECT_EQ(choose(named, "with-bus"), 2) << "a store that the first run named is kept to as well";
}

} // namespace
} // namespace norvane
