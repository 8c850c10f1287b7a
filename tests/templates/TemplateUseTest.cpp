#include "sandbox/TemplateIds.h"
#include "tests/support/SamplePdf.h"
#include "tests/support/SandboxKitFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMTemplateRecipient.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/templates/NVMTemplateUtility.h>
#include <norvane/templates/NVMTemplatesManager.h>

#include <filesystem>
#include <fstream>

namespace norvane {
namespace {

constexpr const char* kTemplateId = sandbox::kRentalTemplateId; // two documents of a page each

class TemplateUseTest : public SandboxKitFixture {
  protected:
    void SetUp() override {
        SandboxKitFixture::SetUp();
        signIn();
        ASSERT_EQ(failureOf([&](auto completion) {
                      NVMTemplatesManager().cacheTemplateWithId(kTemplateId, completion);
                  }),
                  std::nullopt);
    }

    static Result<std::shared_ptr<NVMEnvelopeDefinition>>
    use(const std::optional<Data>& pdf = {}, std::size_t position = 0, bool includePdfs = false) {
        return NVMTemplatesHandler::createEnvelopeFromTemplateWithId(kTemplateId, pdf, position, includePdfs);
    }
    static std::filesystem::path fileOf(const NVMDocument& document) {
        return *NVM_documentsPathByAppendingPathComponent(*document.sandboxFilePath);
    }
    static std::size_t pagesOf(const NVMDocument& document) {
        const auto bytes = NVM_dataWithPath(*document.sandboxFilePath);
        return bytes ? (*PdfDocument::open(*bytes))->pageCount() : 0;
    }
    static std::vector<double> pageNumbers(const NVMEnvelopeDefinition& envelope,
                                           const std::string& documentId) {
        std::vector<double> pages;
        for (const auto& tab : envelope.tagsForDocumentId(documentId))
            pages.push_back(*tab->pageNumber);
        return pages;
    }
    static std::size_t envelopeFileCount() {
        std::error_code none;
        std::filesystem::directory_iterator files(NVM_getUserDirectoryPathWithFolder("ed"), none);
        return none ? 0 : static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }
};

TEST_F(TemplateUseTest, GivesTheEnvelopeFilesOfItsOwn) {
    const auto envelope = use({}, 0, true);
    ASSERT_TRUE(envelope);
    EXPECT_EQ((*envelope)->envelopeId, std::nullopt);
    EXPECT_EQ((*envelope)->status, std::nullopt) << "the template's, not the envelope's";
    EXPECT_EQ(envelopeFileCount(), 3u);
    EXPECT_EQ(NVMTemplatesManager().removeCachedTemplates(), std::nullopt);
    for (const auto& document : *(*envelope)->documents) {
        EXPECT_TRUE(document->sandboxFilePath->starts_with("/userId/ed/"));
        EXPECT_EQ(NVM_dataWithPath(*document->sandboxFilePath), document->pdf);
        EXPECT_EQ(pagesOf(*document), 1u);
    }
    EXPECT_EQ(pagesOf(*(*envelope)->combinedDocument), 2u);
    EXPECT_EQ(use().error().failureReason(), "TEMPLATE_IS_NOT_IN_CACHE");
}

TEST_F(TemplateUseTest, InsertsAPdfAndMovesTheTabsBehindIt) {
    const auto plain = use();
    const auto ahead = use(blankPdf(3), 0);
    ASSERT_TRUE(ahead);
    EXPECT_EQ(pagesOf(*(*ahead)->documents->at(0)), 4u);
    EXPECT_EQ(pagesOf(*(*ahead)->documents->at(1)), 1u);
    EXPECT_EQ(pagesOf(*(*ahead)->combinedDocument), 5u);
    const auto before = pageNumbers(**plain, "1");
    const auto moved = pageNumbers(**ahead, "1");
    ASSERT_FALSE(before.empty());
    ASSERT_EQ(moved.size(), before.size());
    for (std::size_t i = 0; i < moved.size(); ++i)
        EXPECT_EQ(moved[i], before[i] + 3);
    EXPECT_EQ(pageNumbers(**ahead, "2"), pageNumbers(**plain, "2"));

    const auto between = use(blankPdf(2), 1);
    EXPECT_EQ(pagesOf(*(*between)->documents->at(0)), 1u);
    EXPECT_EQ(pagesOf(*(*between)->documents->at(1)), 3u);
    const auto behind = use(blankPdf(2), 99);
    EXPECT_EQ(pagesOf(*(*behind)->documents->at(1)), 3u);
    EXPECT_EQ(pageNumbers(**behind, "2"), pageNumbers(**plain, "2"));
}

TEST_F(TemplateUseTest, LeavesNothingBehindWhenItFails) {
    EXPECT_FALSE(use(Data(std::string("no PDF"))));
    const auto stored = NVMTemplatesManager().cachedTemplateWithId(kTemplateId, false);
    std::ofstream(fileOf(*stored->documents->at(1)), std::ios::app) << "a rotten byte";
    const auto envelope = use();
    ASSERT_FALSE(envelope);
    EXPECT_EQ(envelopeFileCount(), 0u);
    const auto read = NVMTemplatesManager().cachedTemplateWithId(kTemplateId, true);
    EXPECT_TRUE(read->documents->at(0)->pdf);
    EXPECT_FALSE(read->documents->at(1)->pdf) << "not what was stored";
}

TEST_F(TemplateUseTest, TurnsRolesIntoRecipientsAndBack) {
    const auto stored = NVMTemplatesManager().cachedTemplateWithId(kTemplateId, false);
    auto recipients = NVMTemplateUtility::templateRecipientsFromNVMEnvelopeTemplate(*stored);
    ASSERT_EQ(recipients.size(), 1u);
    recipients[0]->recipientName = "Ann Host";
    recipients[0]->inPersonSignerName = "Ben Renter";
    const auto request = NVMTemplateUtility::createEnvelopeRequestForTemplateId(kTemplateId, recipients);
    EXPECT_EQ(request->templateId, kTemplateId);
    ASSERT_EQ(request->templateRoles->size(), 1u);
    EXPECT_EQ(request->templateRoles->front()->roleName, "Renter");
    EXPECT_EQ(request->templateRoles->front()->inPersonSignerName, "Ben Renter");
}

} // namespace
} // namespace norvane
