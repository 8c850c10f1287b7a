#include "sandbox/TemplateIds.h"
#include "tests/support/SandboxKitFixture.h"

#include <norvane/api/NVESAccounts.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/templates/NVMTemplatesManager.h>

#include <algorithm>
#include <filesystem>

namespace norvane {
namespace {

using sandbox::kLeaseTemplateId;
using sandbox::kRentalTemplateId;

class TemplateCachingTest : public SandboxKitFixture {
  protected:
    void SetUp() override {
        SandboxKitFixture::SetUp();
        signIn();
    }

    Failure cache(const std::string& id) const {
        return failureOf([&](auto completion) { manager_.cacheTemplateWithId(id, completion); });
    }
    template <class Start>
    static std::vector<std::string> names(Start start) {
        std::vector<std::string> found;
        const Failure error = failureOf([&](auto completion) {
            start([&found, completion](std::optional<NVMTemplatesManager::TemplateList> list, Failure told) {
                for (const auto& one : list.value_or(NVMTemplatesManager::TemplateList{})) {
                    found.push_back(one->name.value_or(""));
                }
                completion(std::move(told));
            });
        });
        EXPECT_EQ(error, std::nullopt);
        return found;
    }
    static std::vector<std::string> filesIn(std::string_view folder) {
        std::vector<std::string> found;
        std::error_code none;
        for (const auto& entry :
             std::filesystem::directory_iterator(NVM_getUserDirectoryPathWithFolder(folder), none)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    NVMTemplatesManager manager_;
};

TEST_F(TemplateCachingTest, ListsAndFiltersTheAccountsTemplates) {
    const auto all = names([&](auto completion) { manager_.listTemplatesWithCompletion(completion); });
    EXPECT_EQ(all.size(), 4u);
    const auto found = names([&](auto completion) {
        manager_.listTemplatesWithTemplateName(all.front().substr(1, 4), NVMSearchOptions::CaseInsensitive,
                                               completion);
    });
    EXPECT_EQ(found, std::vector<std::string>{all.front()});
    const auto byPages = names([&](auto completion) {
        manager_.listTemplatesWithSearchPredicate(
            [](const NVMEnvelopeTemplateDefinition& one) { return one.pageCount > 10; }, completion);
    });
    EXPECT_EQ(byPages.size(), 1u);

    const auto folders = std::make_shared<NVMTemplatesManager::FolderList>();
    EXPECT_EQ(failureOf([&](auto completion) {
                  manager_.listTemplateFoldersWithCompletion(
                      [=](std::optional<NVMTemplatesManager::FolderList> list, Failure error) {
                          *folders = list.value_or(*folders);
                          completion(std::move(error));
                      });
              }),
              std::nullopt);
    std::size_t inFolders = 0;
    for (const auto& folder : *folders) {
        inFolders += names([&](auto completion) {
                         manager_.listTemplatesWithFolderId(*folder->folderId, completion);
                     }).size();
    }
    EXPECT_EQ(inFolders, all.size());
}

TEST_F(TemplateCachingTest, KeepsTheTemplateWithItsPdfs) {
    EXPECT_EQ(manager_.cacheStateOfTemplateWithId(kRentalTemplateId), NVMTemplateCacheStateNone);
    ASSERT_EQ(cache(kRentalTemplateId), std::nullopt);
    EXPECT_EQ(manager_.cacheStateOfTemplateWithId(kRentalTemplateId), NVMTemplateCacheStateCached);
    EXPECT_EQ(manager_.cachedTemplateIds(), std::vector<std::string>{kRentalTemplateId});
    EXPECT_EQ(filesIn("td").size(), 3u) << "two documents and the combined one";

    const auto kept = manager_.cachedTemplateWithId(kRentalTemplateId, true);
    ASSERT_NE(kept, nullptr);
    ASSERT_EQ(kept->documents->size(), 2u);
    for (const auto& document : *kept->documents)
        EXPECT_TRUE(document->pdf->view().starts_with("%PDF-"));
    ASSERT_NE(kept->combinedDocument, nullptr);
    EXPECT_EQ(kept->combinedDocument->documentId, "1");
    const std::string first = std::filesystem::path(*kept->documents->at(0)->name).stem();
    const std::string second = std::filesystem::path(*kept->documents->at(1)->name).stem();
    EXPECT_EQ(kept->combinedDocument->name, first + "_" + second);
    EXPECT_TRUE(kept->cachedDateTime);

    ASSERT_EQ(kept->recipients->inPersonSigners->size(), 1u);
    const auto tabs = kept->recipients->inPersonSigners->front()->signerTabs();
    ASSERT_NE(tabs, nullptr);
    ASSERT_TRUE(tabs->radioGroupTabs && !tabs->radioGroupTabs->empty());
    EXPECT_EQ(tabs->radioGroupTabs->front()->radios->front()->tabType, NVMTabTypeRadio);
    for (const auto& tab : tabs->allTabs()) {
        EXPECT_FALSE(tab->tabId.value_or("").empty());
        ASSERT_NE(tab->frame, nullptr);
        EXPECT_GT(tab->frame->originX + tab->frame->originY, 0);
    }
}

TEST_F(TemplateCachingTest, ReplacesAnEarlierCopyAndItsFiles) {
    ASSERT_EQ(cache(kLeaseTemplateId), std::nullopt);
    const auto before = filesIn("td");
    ASSERT_EQ(cache(kLeaseTemplateId), std::nullopt);
    const auto after = filesIn("td");
    EXPECT_EQ(manager_.cachedTemplateCount(), 1u);
    EXPECT_EQ(after.size(), before.size());
    EXPECT_NE(after, before);
    EXPECT_EQ(manager_.removeCachedTemplateWithId(kLeaseTemplateId), std::nullopt);
    EXPECT_TRUE(filesIn("td").empty());
    EXPECT_EQ(manager_.cachedTemplateCount(), 0u);
}

TEST_F(TemplateCachingTest, LeavesTheEarlierCopyWholeWhenItFails) {
    ASSERT_EQ(cache(kRentalTemplateId), std::nullopt);
    const auto before = filesIn("td");
    const std::string document = "GET /v2/accounts/*/templates/*/documents/2 ";
    for (const char* fault : {"status=503", "cut-answer=1000", "status=200 body=<html>no PDF</html>"}) {
        service_.addFault(document + fault);
        EXPECT_TRUE(cache(kRentalTemplateId)) << fault;
        EXPECT_EQ(filesIn("td"), before) << fault;
        EXPECT_EQ(manager_.cacheStateOfTemplateWithId(kRentalTemplateId), NVMTemplateCacheStateCached)
            << fault;
    }
    EXPECT_TRUE(manager_.cachedTemplateWithId(kRentalTemplateId, true)->documents->at(1)->pdf);
    EXPECT_TRUE(std::filesystem::is_empty(platform().files->temporaryFolder()));
}

TEST_F(TemplateCachingTest, TellsTheDelegateAndTheStateWhileItRuns) {
    struct Recorder : NVMTemplatesManagerDelegate {
        void templatesManagerDidStartCachingTemplate(const std::string& id) override { started = id; }
        void templatesManagerDidEndCachingTemplate(const std::string& id, const Failure& error) override {
            ended = id;
            failed = error.has_value();
        }
        std::string started, ended;
        bool failed = true;
    };
    const auto recorder = std::make_shared<Recorder>();
    manager_.setDelegate(recorder);
    service_.addFault("GET /v2/accounts/*/templates/* delay=200");
    EXPECT_EQ(failureOf([&](auto completion) {
                  manager_.cacheTemplateWithId(kLeaseTemplateId, completion);
                  EXPECT_EQ(recorder->started, kLeaseTemplateId);
                  EXPECT_EQ(manager_.cacheStateOfTemplateWithId(kLeaseTemplateId),
                            NVMTemplateCacheStateInProgress);
              }),
              std::nullopt);
    EXPECT_EQ(recorder->ended, kLeaseTemplateId);
    EXPECT_FALSE(recorder->failed);
}

TEST_F(TemplateCachingTest, StoresNothingForAUserWhoHasLeft) {
    service_.addFault("GET /v2/accounts/*/templates/*/documents/combined delay=300");
    EXPECT_TRUE(failureOf([&](auto completion) {
        manager_.cacheTemplateWithId(kLeaseTemplateId, completion);
        NVMManager::clearCredentialsAndCachedTemplates();
    }));
    signIn();
    EXPECT_EQ(manager_.cachedTemplateCount(), 0u);
    EXPECT_TRUE(filesIn("td").empty());
}

TEST_F(TemplateCachingTest, RefusesWhatCannotBe) {
    EXPECT_EQ(cache("../documents")->failureReason(), "SDK_INVALID_INPUT");
    EXPECT_EQ(cache("00000000-0000-4000-8000-000000000000")->code, 404);
    NVMManager::clearCredentialsAndCachedTemplates();
    EXPECT_EQ(cache(kLeaseTemplateId)->failureReason(), "SDK_SETUP_ERROR");
    EXPECT_TRUE(manager_.cachedTemplates().empty());
}

} // namespace
} // namespace norvane
