#include "bench/BenchHome.h"

#include <norvane/sdk/NVMManager.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMEnvelopesHandler.h>
#include <norvane/store/ObjectStore.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>

// What grows with the number of envelopes and with their size, and what does not.

namespace norvane::bench {

namespace {

/// Large: forty tabs and a long mail text, which no list needs.
enum class Size { Small, Large };

std::shared_ptr<NVMCDEnvelopeDefinition> envelope(int number, Size size) {
    auto made = std::make_shared<NVMCDEnvelopeDefinition>();
    made->envelopeId = "envelope " + std::to_string(number);
    made->transactionId = made->envelopeId;
    made->status = "sent";
    made->emailSubject = "Lease of 14 Quay Street";
    if (size == Size::Small) return made;
    made->emailBlurb = std::string(8'000, 'b');
    made->recipients = std::make_shared<NVMCDRecipients>();
    auto signer = std::make_shared<NVMCDRecipient>();
    signer->recipientId = "1";
    signer->name = "Ann Smith";
    signer->tabs = std::make_shared<NVMCDTabs>();
    auto& tabs = signer->tabs->textTabs.emplace();
    for (int tab = 0; tab < 40; ++tab) {
        tabs.push_back(std::make_shared<NVMCDTab>());
        tabs.back()->tabId = std::to_string(tab);
        tabs.back()->documentId = "1";
        tabs.back()->value = "The value of the entry";
    }
    made->recipients->signers.emplace().push_back(signer);
    return made;
}

bool fill(int count, Size size) {
    constexpr int kInOneSave = 100;
    for (int first = 0; first < count; first += kInOneSave) {
        const auto error =
            ObjectStore::defaultStore()->saveAndWait([&](ManagedObjectContext& context) -> Failure {
                for (int number = first; number < first + kInOneSave; ++number)
                    context.insert(envelope(number, size));
                return std::nullopt;
            });
        if (error) return false;
    }
    return true;
}

/// The store of that many envelopes is the default one while it lives; it is filled the first time.
class StoreInUse {
  public:
    StoreInUse(int count, Size size)
        : file_("Scale" + std::to_string(count) + (size == Size::Large ? "large" : "small") + ".sqlite") {
        benchHome();
        static std::map<std::string, bool> filled;
        bool& isFilled = filled[file_];
        isReady_ = !ObjectStore::setupDefaultStore(file_) && (isFilled || fill(count, size));
        isFilled = isReady_;
    }
    /// Other lines measure the kit's own store.
    ~StoreInUse() { benchmark::DoNotOptimize(ObjectStore::setupDefaultStore()); }

    bool isReady() const { return isReady_; }
    const std::string& file() const { return file_; }

  private:
    const std::string file_;
    bool isReady_ = false;
};

void listIds(benchmark::State& state, int count, Size size) {
    const StoreInUse store(count, size);
    if (!store.isReady()) return state.SkipWithError("no store");
    for (auto _ : state)
        if (NVMEnvelopesHandler::cachedEnvelopeIds().size() != static_cast<std::size_t>(count))
            state.SkipWithError("not all were listed");
}

void findOne(benchmark::State& state, int count) {
    const StoreInUse store(count, Size::Large);
    if (!store.isReady()) return state.SkipWithError("no store");
    const std::string id = "envelope " + std::to_string(count - 1);
    for (auto _ : state)
        if (!NVMEnvelopesHandler::findEnvelopeWithId(id, ObjectStore::defaultStore()->defaultContext()))
            state.SkipWithError("it was not found");
}

/// One envelope of forty tabs more, in a save of its own.
void insertOne(benchmark::State& state, int count) {
    const StoreInUse store(count, Size::Large);
    if (!store.isReady()) return state.SkipWithError("no store");
    const auto added = envelope(count, Size::Large);
    const auto save = [&](const std::function<void(ManagedObjectContext&)>& change) {
        const auto error = ObjectStore::defaultStore()->saveAndWait([&](ManagedObjectContext& context) {
            change(context);
            return Failure();
        });
        if (error) state.SkipWithError("it could not be saved");
    };
    for (auto _ : state) {
        save([&](ManagedObjectContext& context) { context.insert(envelope(count, Size::Large)); });
        state.PauseTiming();
        save([&](ManagedObjectContext& context) {
            context.removeMatching(NVMCDEnvelopeDefinition::fetchRequest().where(
                "envelopeId", FetchRequest::Match::Equal, *added->envelopeId));
        });
        state.ResumeTiming();
    }
}

void openLarge(benchmark::State& state) {
    const StoreInUse store(10'000, Size::Large);
    if (!store.isReady()) return state.SkipWithError("no store");
    for (auto _ : state) {
        ObjectStore::closeDefaultStore();
        if (ObjectStore::setupDefaultStore(store.file())) state.SkipWithError("it could not be opened");
    }
}

BENCHMARK_CAPTURE(listIds, large, 10'000, Size::Large)
    ->Name("ids of 10,000 : of small envelopes/kit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(listIds, small, 10'000, Size::Small)
    ->Name("ids of 10,000 : of small envelopes/limit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOne, thousand, 1'000)
    ->Name("find one of 1,000 : of 100/kit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOne, first, 100)
    ->Name("find one of 1,000 : of 100/limit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOne, many, 10'000)
    ->Name("find one of 10,000 : of 100/kit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findOne, few, 100)
    ->Name("find one of 10,000 : of 100/limit")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(insertOne, thousand, 1'000)
    ->Name("cache into 1,000 : into 100/kit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(insertOne, first, 100)
    ->Name("cache into 1,000 : into 100/limit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(insertOne, many, 10'000)
    ->Name("cache into 10,000 : into 100/kit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(insertOne, few, 100)
    ->Name("cache into 10,000 : into 100/limit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(openLarge)
    ->Name("set-up with a store of 10,000 envelopes/kit")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

} // namespace norvane::bench
