#include "tests/store/DiskLayer.h"
#include "tests/store/EnvelopeFixture.h"

#include <cerrno>
#include <cstdlib>
#include <set>

namespace norvane {
namespace {

/// All seeds and moments when asked for, else a few: the whole matrix takes minutes.
bool wholeMatrix() { return std::getenv("NORVANE_ALL_FAULTS") != nullptr; }

constexpr const char* kCacheA = "cache A";
constexpr const char* kCacheB = "cache B";
constexpr const char* kUpdateA = "update A";
constexpr const char* kRemoveB = "remove B";

/// What the store promises at a moment: the steps that were begun, and those of them that were reported done.
struct Promises {
    std::set<std::string> begun;
    std::set<std::string> done;

    void note(const std::string& mark) {
        const bool isDone = mark.ends_with(" done");
        (isDone ? done : begun).insert(isDone ? mark.substr(0, mark.size() - 5) : mark);
    }
    bool mustHave(const std::string& subject) const {
        if (subject == "A") return done.contains(kCacheA);
        return done.contains(kCacheB) && !begun.contains(kRemoveB);
    }
    bool mayHave(const std::string& subject) const {
        if (subject == "A") return begun.contains(kCacheA);
        return begun.contains(kCacheB) && !done.contains(kRemoveB);
    }
    bool allows(const std::string& subject, std::string_view bytes) const {
        if (subject == "B") return bytes == "%PDF B";
        if (bytes == "%PDF A one") return !done.contains(kUpdateA);
        return bytes == "%PDF A two" && begun.contains(kUpdateA);
    }
};

class DurabilityTest : public EnvelopeFixture {
  protected:
    void SetUp() override { KitFixture::SetUp(); }

    static NVMEnvelopeDefinition lease(const std::string& subject, const std::string& bytes) {
        auto made = envelope();
        made.emailSubject = subject;
        made.documents->front()->pdf = Data(bytes);
        return made;
    }
    static std::string idOf(const std::string& subject) {
        for (const auto& summary : NVMEnvelopesHandler::cachedEnvelopeSummaries())
            if (summary.emailSubject == subject) return summary.envelopeId.value_or("");
        return "";
    }

    /// Sets up and lives through all steps, telling how far it came.
    void live(DiskLayer& disk, Promises& promises) {
        const auto step = [&](const std::string& name, const std::function<Failure()>& work) {
            disk.mark(name);
            promises.note(name);
            const Failure error = work();
            errors_.push_back(error);
            if (error) return;
            disk.mark(name + " done");
            promises.note(name + " done");
        };
        const auto cache = [](const std::string& subject, const std::string& bytes) {
            return result(
                [&](auto done) { NVMEnvelopesHandler::cacheEnvelope(lease(subject, bytes), done); });
        };
        errors_.clear();
        if (const auto error = ObjectStore::setupDefaultStore()) {
            errors_.push_back(error);
            return;
        }
        step(kCacheA, [&] { return cache("A", "%PDF A one"); });
        step(kCacheB, [&] { return cache("B", "%PDF B"); });
        step(kUpdateA, [&] {
            NVMEnvelopeDefinition known;
            known.envelopeId = idOf("A");
            return updated([&](auto done) {
                NVMEnvelopesHandler::updateCachedEnvelopeAddOrUpdateDocument(
                    known, *document("1", "%PDF A two"), done);
            });
        });
        const std::string removed = idOf("B");
        disk.mark(kRemoveB);
        promises.note(kRemoveB);
        NVMEnvelopesHandler::removeCachedEnvelopeWithId(removed);
    }

    /// The next set-up finds every envelope that was told of, whole, and nothing besides.
    void expectPromisesKept(const Promises& promises) {
        openStore();
        std::set<std::string> subjects, named;
        for (const auto& summary : NVMEnvelopesHandler::cachedEnvelopeSummaries()) {
            const std::string subject = summary.emailSubject.value_or("");
            EXPECT_TRUE(subjects.insert(subject).second) << "twice: " << subject;
            EXPECT_TRUE(promises.mayHave(subject)) << subject;
            const auto row = stored(*summary.envelopeId);
            ASSERT_TRUE(row) << subject;
            EXPECT_EQ(row->recipients->signers->front()->tabs->textTabs->front()->value, "value");
            const auto& document = row->documents->front();
            const auto bytes = NVM_verifiedDataWithPath(*document->sandboxFilePath, document->_sha256, "it");
            ASSERT_TRUE(bytes.ok()) << bytes.error().localizedDescription();
            EXPECT_TRUE(promises.allows(subject, bytes->view())) << subject << bytes->view();
            named.insert(*document->sandboxFilePath);
        }
        for (const char* subject : {"A", "B"})
            EXPECT_TRUE(!promises.mustHave(subject) || subjects.contains(subject)) << "lost: " << subject;
        const auto files = filesIn("ed");
        EXPECT_EQ(std::set<std::string>(files.begin(), files.end()), named);
        EXPECT_EQ(one("PRAGMA integrity_check"), "ok");
        EXPECT_TRUE(query("PRAGMA foreign_key_check").empty());
        ObjectStore::closeDefaultStore();
    }

    void forget() {
        ObjectStore::closeDefaultStore();
        DiskImage().restore(home_.path(), DiskImage::After::Kill, 0);
    }

    /// Every moment of what was recorded, or some of them.
    void expectPromisesKeptAtEveryMoment(const std::vector<DiskCall>& calls, DiskImage::After after,
                                         unsigned seed, std::size_t stride = wholeMatrix() ? 1 : 7) {
        DiskImage image;
        Promises promises;
        for (std::size_t moment = 0; moment < calls.size() && !HasFailure(); ++moment) {
            SCOPED_TRACE("before call " + std::to_string(moment) + " on " + calls[moment].path);
            if (moment % stride == seed % stride) {
                image.restore(home_.path(), after, seed * 1000 + static_cast<unsigned>(moment));
                expectPromisesKept(promises);
            }
            image.apply(calls[moment]);
            if (calls[moment].kind == DiskCall::Kind::Mark) promises.note(calls[moment].path);
        }
    }

    std::vector<DiskCall> record(const DiskLayer::Fault& fault = {}) {
        forget();
        DiskLayer disk(home_.path(), fault);
        Promises promises;
        live(disk, promises);
        const auto calls = disk.calls();
        ObjectStore::closeDefaultStore();
        return calls;
    }

    FreeSyncs freeSyncs_;
    std::vector<Failure> errors_;
};

TEST_F(DurabilityTest, KilledOrWithoutPowerAtAnyMomentItKeepsItsPromises) {
    const auto calls = record();
    for (const auto& error : errors_)
        ASSERT_EQ(error, std::nullopt) << error->localizedDescription();
    ASSERT_GT(calls.size(), 100u);
    expectPromisesKeptAtEveryMoment(calls, DiskImage::After::Kill, 0);
    expectPromisesKeptAtEveryMoment(calls, DiskImage::After::PowerLoss, 1);
    for (unsigned seed = 2; seed < (wholeMatrix() ? 12u : 3u); ++seed)
        expectPromisesKeptAtEveryMoment(calls, DiskImage::After::TornWrite, seed);
}

TEST_F(DurabilityTest, AfterAnInputOutputErrorItKeepsItsPromises) {
    const auto last = record().size();
    for (std::size_t at = 0; at < last && !HasFailure(); at += wholeMatrix() ? 1 : 11) {
        for (const bool forever : {false, true}) {
            SCOPED_TRACE("error at call " + std::to_string(at) + (forever ? " and ever after" : ""));
            forget();
            std::size_t calls = 0;
            DiskLayer disk(home_.path(), [&](const DiskCall&, std::size_t& size) {
                const bool fails = forever ? calls >= at : calls == at;
                ++calls;
                if (fails) size = 0;
                return fails ? EIO : 0;
            });
            Promises promises;
            live(disk, promises);
            const auto recorded = disk.calls();
            disk.heal();
            ObjectStore::closeDefaultStore();
            expectPromisesKept(promises);
        }
    }
}

/// The process is killed right after an error, before anything could be put right.
TEST_F(DurabilityTest, AnErrorAndThenTheEndLoseNothingEither) {
    const auto last = record().size();
    for (std::size_t at = 3; at < last && !HasFailure(); at += wholeMatrix() ? 7 : 150) {
        SCOPED_TRACE("error at call " + std::to_string(at));
        std::size_t calls = 0;
        const auto recorded = record([&](const DiskCall&, std::size_t& size) {
            const bool fails = ++calls >= at && calls < at + 3;
            if (fails) size = 0;
            return fails ? EIO : 0;
        });
        expectPromisesKeptAtEveryMoment(recorded, DiskImage::After::Kill, static_cast<unsigned>(at), 7);
    }
}

TEST_F(DurabilityTest, AFullDiskIsToldAsSuchWhereverItFillsUp) {
    const std::size_t step = wholeMatrix() ? 4'096 : 90'000;
    for (std::size_t budget = 0; budget < 900'000 && !HasFailure(); budget += step) {
        SCOPED_TRACE("space for " + std::to_string(budget) + " bytes");
        forget();
        std::size_t left = budget;
        DiskLayer disk(home_.path(), [&](const DiskCall& call, std::size_t& size) {
            if (call.kind != DiskCall::Kind::Write && call.kind != DiskCall::Kind::Create) return 0;
            const bool fits = size <= left && (left > 0 || call.kind != DiskCall::Kind::Create);
            size = std::min(size, left);
            left -= size;
            return fits ? 0 : ENOSPC;
        });
        Promises promises;
        live(disk, promises);
        disk.heal();
        for (const auto& error : errors_)
            EXPECT_TRUE(!error || isDiskFull(*error) ||
                        error->code == static_cast<std::int64_t>(StoreError::NotFound))
                << error->domain << error->code << error->localizedDescription();
        ObjectStore::closeDefaultStore();
        expectPromisesKept(promises);
    }
}

} // namespace
} // namespace norvane
