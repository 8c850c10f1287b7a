#include "tests/store/DiskLayer.h"
#include "tests/store/StoreFixture.h"
#include "tests/support/Event.h"

#include <norvane/store/NVMCDEnvelopes.h>

#include <atomic>
#include <thread>

namespace norvane {
namespace {

class StoreThreadsTest : public StoreFixture {
  protected:
    FreeSyncs freeSyncs_;
};

constexpr int kWrites = 300;

/// Two documents of one number: a reader that saw half a save would see them differ.
std::shared_ptr<NVMCDEnvelopeDefinition> pair(double number) {
    auto envelope = std::make_shared<NVMCDEnvelopeDefinition>();
    envelope->documents.emplace();
    for (int i = 0; i < 2; ++i) {
        envelope->documents->push_back(std::make_shared<NVMCDDocument>());
        envelope->documents->back()->transformPdfFields = number;
    }
    return envelope;
}

TEST_F(StoreThreadsTest, ReadersSeeWholeSavesWhileManyWrite) {
    const auto envelope = pair(0);
    context().insert(envelope);
    ASSERT_EQ(context().save(), std::nullopt);
    std::atomic<bool> done = false;
    std::atomic<int> torn = 0, failed = 0, reads = 0;
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader) {
        readers.emplace_back([&] {
            while (!done) {
                const auto loaded = context().objectWithID<NVMCDEnvelopeDefinition>(envelope->objectID);
                if (!loaded.ok() || !*loaded) {
                    ++failed;
                    continue;
                }
                ++reads;
                const auto& documents = *(*loaded)->documents;
                if (documents[0]->transformPdfFields != documents[1]->transformPdfFields) ++torn;
            }
        });
    }
    Event saved;
    const auto write = [&](double number) {
        return [&, number](ManagedObjectContext& own) -> Failure {
            auto loaded = own.objectWithID<NVMCDEnvelopeDefinition>(envelope->objectID);
            if (!loaded) return loaded.error();
            for (const auto& document : *(*loaded)->documents)
                document->transformPdfFields = number;
            own.update(*loaded);
            own.insert(pair(number));
            return std::nullopt;
        };
    };
    std::thread direct([&] {
        for (int number = 0; number < kWrites; ++number)
            if (store()->saveAndWait(write(number))) ++failed;
    });
    for (int number = 1'000; number < 1'000 + kWrites; ++number)
        store()->saveInBackground(write(number), [&](const Failure& error) {
            if (error) ++failed;
            saved.set();
        });
    EXPECT_TRUE(saved.wait(kWrites));
    direct.join();
    done = true;
    for (auto& reader : readers)
        reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(failed, 0);
    EXPECT_GT(reads, 100);
    EXPECT_EQ(one("SELECT count(*) FROM NVMCDEnvelopeDefinition"), std::to_string(2 * kWrites + 1));
}

TEST_F(StoreThreadsTest, EverySaveCompletesOnceThoughTheStoreCloses) {
    Event completed;
    std::atomic<int> stored = 0;
    for (int i = 0; i < 20; ++i)
        store()->saveInBackground(
            [](ManagedObjectContext& own) -> Failure {
                own.insert(pair(1));
                return std::nullopt;
            },
            [&](const Failure& error) {
                if (!error) ++stored;
                completed.set();
            });
    ObjectStore::closeDefaultStore();
    ASSERT_TRUE(completed.wait(20));
    EXPECT_EQ(one("SELECT count(*) FROM NVMCDEnvelopeDefinition"), std::to_string(stored));
}

} // namespace
} // namespace norvane
