#include "tests/store/EnvelopeFixture.h"
#include "tests/store/FaultyDisk.h"
#include "tests/support/ChildProcess.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/platform/Url.h>
#include <norvane/store/NVMEnvelopeSynchronizer.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <sstream>

namespace norvane {
namespace {

/// Ends the process at the call of that number.
class Executioner {
  public:
    explicit Executioner(int at)
        : left_(at) {}
    void pass() {
        if (--left_ == 0) std::raise(SIGKILL);
    }

  private:
    std::atomic<int> left_;
};

/// A service that lasts: a line for each envelope that it took, its transaction identifier and its document's
/// bytes.
class LastingService final : public EnvelopeUploader {
  public:
    explicit LastingService(const std::filesystem::path& home, Executioner* executioner = nullptr)
        : file_(home / "service")
        , executioner_(executioner) {}

    std::vector<std::pair<std::string, std::string>> taken() const {
        std::vector<std::pair<std::string, std::string>> taken;
        std::ifstream stream(file_);
        for (std::string line; std::getline(stream, line);)
            taken.emplace_back(line.substr(0, 36), line.substr(37));
        return taken;
    }

    void upload(std::shared_ptr<NVESEnvelopeDefinition> envelope, Completion completion) override {
        const auto url = Url::parse(*envelope->documents->front()->fileSandboxURL.text);
        std::stringstream bytes;
        bytes << std::ifstream(url->filePath()).rdbuf();
        pass();
        std::ofstream(file_, std::ios::app) << *envelope->transactionId << ' ' << bytes.str() << '\n'
                                            << std::flush;
        pass();
        completion({"service-" + *envelope->transactionId, std::nullopt, true});
    }
    void lookUp(const std::vector<std::string>& transactionIds, LookupCompletion completion) override {
        std::map<std::string, std::string> found;
        for (const auto& [id, bytes] : taken())
            if (id == transactionIds.front()) found[id] = "service-" + id;
        completion(found);
    }

  private:
    void pass() {
        if (executioner_) executioner_->pass();
    }
    const std::filesystem::path file_;
    Executioner* const executioner_;
};

constexpr const char* kBytes = "%PDF the contract";

NVMEnvelopeDefinition contract() {
    NVMEnvelopeDefinition envelope;
    envelope.status = "sent";
    envelope.documents.emplace().push_back(std::make_shared<NVMDocument>());
    envelope.documents->front()->documentId = "1";
    envelope.documents->front()->pdf = Data(std::string(kBytes));
    return envelope;
}

bool waitFor(const std::function<void(NVMEnvelopesHandler::Completion)>& start) {
    Event ended;
    bool succeeded = false;
    start([&](const Failure& error) {
        succeeded = !error;
        ended.set();
    });
    return ended.wait() && succeeded;
}

void syncWith(const std::shared_ptr<EnvelopeUploader>& service) {
    const auto synchronizer =
        NVMEnvelopeSynchronizer::withEnvelopeCacher(NVMRecordCacher::recordCacher(), service);
    synchronizer->sync();
    synchronizer->waitUntilIdle();
}

/// Signs, finishes and uploads one envelope, telling how far it came, until it is killed.
int liveUntilKilled(const std::vector<std::string>& arguments) {
    const std::filesystem::path home = arguments[0];
    PlatformOptions options;
    options.home = home;
    options.credentialStore = CredentialStoreKind::File;
    auto platform = Platform::complete({}, options);
    if (!platform) return 2;
    Platform::install(std::move(*platform));
    Executioner executioner(std::stoi(arguments[1]));
    const auto say = [&](const char* word) {
        std::ofstream(home / "said", std::ios::app) << word << '\n' << std::flush;
    };
    FaultyDisk disk([&](std::string_view call) {
        if (call != "write") executioner.pass();
        return SQLITE_OK;
    });
    if (ObjectStore::setupDefaultStore()) return 3;
    auto envelope = contract();
    if (!waitFor([&](auto done) { NVMEnvelopesHandler::cacheEnvelope(envelope, done); })) return 4;
    say("cached");
    auto signedEnvelope =
        *NVMEnvelopesHandler::cachedEnvelopeById(NVMEnvelopesHandler::cachedEnvelopeIds().front());
    if (!waitFor([&](auto done) { NVMEnvelopesHandler::finishEnvelope(signedEnvelope, done); })) return 5;
    say("finished");
    syncWith(std::make_shared<LastingService>(home, &executioner));
    ObjectStore::closeDefaultStore();
    return 0;
}

const TestRole kRole("store-kill", &liveUntilKilled);

class StoreKillTest : public EnvelopeFixture {
  protected:
    void SetUp() override { KitFixture::SetUp(); }

    std::size_t linesSaid() const {
        std::ifstream stream(home_.path() / "said");
        std::size_t lines = 0;
        for (std::string line; std::getline(stream, line);)
            ++lines;
        return lines;
    }
    /// What was promised holds right after the kill and after the next run.
    void expectNothingLostNothingTwice() {
        const auto service = std::make_shared<LastingService>(home_.path());
        openStore();
        const auto ids = NVMEnvelopesHandler::cachedEnvelopeIds();
        if (linesSaid() > 0) {
            EXPECT_FALSE(ids.empty() && service->taken().empty()) << "lost";
        }
        EXPECT_LE(ids.size(), 1u) << "an earlier copy beside the finished one";
        for (const auto& id : ids)
            EXPECT_EQ(NVM_dataWithPath(*stored(id)->documents->front()->sandboxFilePath)->view(), kBytes);
        EXPECT_EQ(filesIn("ed").size(), ids.size()) << "a file without a row, or a row without a file";
        syncWith(service);
        const auto taken = service->taken();
        EXPECT_LE(taken.size(), 1u) << "twice";
        for (const auto& [id, bytes] : taken)
            EXPECT_EQ(bytes, kBytes);
        EXPECT_TRUE(rowCounts().empty());
        EXPECT_TRUE(filesIn("ed").empty());
        EXPECT_EQ(one("PRAGMA integrity_check"), "ok");
        ObjectStore::closeDefaultStore();
    }
};

TEST_F(StoreKillTest, WhateverTheMomentNothingIsLostAndNothingIsSentTwice) {
    int kills = 0;
    for (int at = 1;; ++at) {
        SCOPED_TRACE("killed at point " + std::to_string(at));
        std::filesystem::remove_all(home_.path() / "Documents" / "userId");
        for (const auto& entry : std::filesystem::directory_iterator(home_.path() / "support"))
            std::filesystem::remove_all(entry.path());
        std::filesystem::remove(home_.path() / "service");
        std::filesystem::remove(home_.path() / "said");
        auto child = ChildProcess::inRole("store-kill", {home_.path().string(), std::to_string(at)});
        const int status = child.wait();
        if (status == 0) break;
        ASSERT_EQ(status, -1) << "the program itself failed";
        ++kills;
        expectNothingLostNothingTwice();
        if (HasFailure()) break;
    }
    EXPECT_GT(kills, 15);
}

} // namespace
} // namespace norvane
