#include "tests/store/EnvelopeFixture.h"
#include "tests/support/ChildProcess.h"

#include <norvane/store/StoreInspection.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>

namespace norvane {
namespace {

class StoreInspectionTest : public EnvelopeFixture {
  protected:
    static std::set<std::string> kinds() {
        std::set<std::string> kinds;
        const auto findings = checkStore();
        EXPECT_TRUE(findings.ok());
        for (const auto& finding : *findings)
            kinds.insert(finding.kind);
        return kinds;
    }
    static std::filesystem::path fileOf(const std::string& id) {
        return *NVM_documentsPathByAppendingPathComponent(*stored(id)->documents->front()->sandboxFilePath);
    }
    using Kinds = std::set<std::string>;
};

TEST_F(StoreInspectionTest, FindsNothingInWhatTheKitItselfDid) {
    cached(envelope());
    NVMEnvelopesHandler::removeCachedEnvelopeWithId(cached(envelope("created")));
    EXPECT_EQ(kinds(), Kinds{});
    const auto statistics = storeStatistics();
    ASSERT_TRUE(statistics.ok());
    EXPECT_EQ(statistics->envelopes, 1u);
    EXPECT_EQ(statistics->waitingForUpload, 1u);
    EXPECT_EQ(statistics->documentBytes, 8u);
    EXPECT_EQ(statistics->envelopesByStatus,
              (std::vector<std::pair<std::string, std::size_t>>{{"completed", 1}}));
}

TEST_F(StoreInspectionTest, FindsWhatIsWrongWithFiles) {
    const std::string id = cached(envelope());
    std::ofstream(fileOf(id).parent_path() / "stray.pdf") << "nobody's";
    EXPECT_EQ(kinds(), (Kinds{"file", "mode"}));
    chmod((fileOf(id).parent_path() / "stray.pdf").c_str(), 0600);
    EXPECT_EQ(kinds(), Kinds{"file"});
    std::filesystem::remove(fileOf(id).parent_path() / "stray.pdf");
    std::ofstream(fileOf(id), std::ios::app) << "!";
    EXPECT_EQ(kinds(), Kinds{"document"});
    std::filesystem::remove(fileOf(id));
    EXPECT_EQ(kinds(), Kinds{"document"});
}

TEST_F(StoreInspectionTest, FindsWhatIsWrongWithRows) {
    cached(envelope());
    cached(envelope());
    ObjectStore::closeDefaultStore();
    damage("UPDATE NVMCDEnvelopeDefinition SET envelopeId = 'one'; UPDATE NVMCDTab SET textTab = NULL WHERE "
           "_id = 1;"
           "UPDATE NVMCDRecipients SET _envelopeDefinition = 99 WHERE _id = 1;"
           "UPDATE nv_metadata SET value = '7' WHERE key = 'modelVersion';"
           "UPDATE NVMCDDocument SET sandboxFilePath = (SELECT sandboxFilePath FROM NVMCDDocument LIMIT 1)");
    openStore();
    EXPECT_EQ(kinds(), (Kinds{"content", "document", "identifier", "model", "owner", "reference"}));
}

TEST_F(StoreInspectionTest, NamesTheColumnsThatAreMissing) {
    cached(envelope());
    ObjectStore::closeDefaultStore();
    query("ALTER TABLE NVMCDTab DROP COLUMN fontColor; DROP TABLE nv_metadata");
    openStore();
    const auto findings = checkStore();
    ASSERT_TRUE(findings.ok());
    ASSERT_EQ(findings->size(), 2u);
    EXPECT_EQ(findings->front().subject, "NVMCDTab");
    EXPECT_NE(findings->front().description.find("fontColor"), std::string::npos);
    log_->expect("no such column");
    EXPECT_FALSE(stored(NVMEnvelopesHandler::cachedEnvelopeIds().front())) << "no name for a value";
}

/// What a process leaves when it is killed while it writes files, and what one still has under way.
int writeFilesForEver(const std::vector<std::string>& arguments) {
    PlatformOptions options;
    options.home = arguments[0];
    options.credentialStore = CredentialStoreKind::File;
    auto platform = Platform::complete({}, options);
    if (!platform) return 2;
    Platform::install(std::move(*platform));
    if (ObjectStore::setupDefaultStore()) return 3;
    if (NVM_encryptedWriteToFile(Data(std::string("%PDF")), NVM_envelopeDocumentSubPath(),
                                 kEnvelopeDocumentsFolder))
        return 4;
    std::ofstream(Platform::current().files->temporaryFolder() / "download-abcdef") << "half";
    std::cout << "written" << std::endl;
    pause(); // until the test ends it
    return 0;
}

const TestRole kRole("store-writer", &writeFilesForEver);

TEST_F(StoreInspectionTest, ALivingProcessKeepsItsFilesAndADeadOneLosesThem) {
    ObjectStore::closeDefaultStore();
    auto writer = ChildProcess::inRole("store-writer", {home_.path().string()});
    ASSERT_EQ(writer.readLine(), "written");
    const auto download = platform().files->temporaryFolder() / "download-abcdef";
    openStore();
    EXPECT_EQ(filesIn("ed").size(), 1u);
    EXPECT_TRUE(std::filesystem::exists(download));
    EXPECT_EQ(kinds(), Kinds{});
    writer.stop();
    reopenStore();
    EXPECT_TRUE(filesIn("ed").empty());
    EXPECT_FALSE(std::filesystem::exists(download));
    EXPECT_EQ(rowCounts().count("nv_file"), 0u);
}

/// Names, values, document bytes: nothing of a removed envelope can be read from any file, though a reader
/// was in the way at the time.
TEST_F(StoreInspectionTest, ARemovedEnvelopeLeavesNothingToRead) {
    const auto isReadable = [&](const std::string& text) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.path())) {
            if (!entry.is_regular_file()) continue;
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
            if (bytes.find(text) != std::string::npos) return true;
        }
        return false;
    };
    std::vector<std::string> ids;
    for (int number = 0; number < 60; ++number) {
        auto made = envelope();
        const std::string mark = (number % 3 == 0 ? "Secret" : "Public") + std::to_string(number);
        made.emailSubject = std::string(static_cast<std::size_t>(number * 37 % 900), 'x') + mark;
        made.documents->front()->pdf = Data("%PDF " + mark);
        made.recipients->signers->front()->setNameAndEmail(mark, mark + "@example.com");
        ids.push_back(cached(made));
    }
    ASSERT_TRUE(isReadable("Secret"));
    sqlite3* reader = nullptr;
    ASSERT_EQ(sqlite3_open(storeFile().c_str(), &reader), SQLITE_OK);
    sqlite3_exec(reader, "BEGIN; SELECT count(*) FROM NVMCDTab", nullptr, nullptr, nullptr);
    for (std::size_t number = 0; number < ids.size(); number += 3)
        NVMEnvelopesHandler::removeCachedEnvelopeWithId(ids[number]);
    sqlite3_close(reader);
    ASSERT_TRUE(stored(ids[1])); // a later read sees to what is still owed
    Event settled;
    store()->saveInBackground([](ManagedObjectContext&) { return Failure(); },
                              [&](const Failure&) { settled.set(); });
    ASSERT_TRUE(settled.wait());
    EXPECT_FALSE(isReadable("Secret"));
    EXPECT_TRUE(isReadable("Public"));
}

} // namespace
} // namespace norvane
