#include "tests/support/KitFixture.h"
#include "tests/support/SamplePdf.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/pdf/PdfDocument.h>

namespace norvane {
namespace {

class CombinedDocument : public KitFixture {
  protected:
    void add(const std::string& order, const std::string& name, const Data& pdf) {
        if (!envelope_.documents) envelope_.documents.emplace();
        envelope_.documents->push_back(std::make_shared<NVMDocument>());
        envelope_.documents->back()->order = order;
        envelope_.documents->back()->name = name;
        envelope_.documents->back()->pdf = pdf;
    }
    /// What the completion was given; it must come once, and not inside the call.
    Failure combine() {
        std::vector<Failure> given;
        const auto queue = platform().executors->mainQueue();
        queue->sync([&] {
            envelope_.createCombinedDocumentWithCompletion(
                [&](const Failure& failure) { given.push_back(failure); });
            EXPECT_TRUE(given.empty());
        });
        queue->sync([] {});
        EXPECT_EQ(given.size(), 1u);
        return given.empty() ? Failure() : given.front();
    }
    double heightOfPage(std::size_t number) const {
        const auto document = PdfDocument::open(*envelope_.combinedDocument->pdf);
        return (*document)->page(number)->size().height;
    }

    NVMEnvelopeDefinition envelope_;
};

TEST_F(CombinedDocument, HoldsThePagesOfAllInTheirOrder) {
    add("10", "Terms.pdf", blankPdf(2, "/MediaBox [0 0 100 200]"));
    add("9", "Lease.pdf", blankPdf(1, "/MediaBox [0 0 100 300]"));
    ASSERT_EQ(combine(), std::nullopt);
    EXPECT_EQ(envelope_.combinedDocument->name, "Lease_Terms");
    EXPECT_EQ(envelope_.combinedDocument->pages, "3");
    EXPECT_EQ(heightOfPage(1), 300);
    EXPECT_EQ(heightOfPage(3), 200);
    EXPECT_EQ(envelope_.documents->front()->name, "Terms.pdf");
}

TEST_F(CombinedDocument, OfOneDocumentIsThatDocument) {
    const Data pdf = blankPdf(2);
    add("1", "", pdf);
    ASSERT_EQ(combine(), std::nullopt);
    EXPECT_EQ(envelope_.combinedDocument->pdf, pdf);
    EXPECT_EQ(envelope_.combinedDocument->name, "combined_document");
}

TEST_F(CombinedDocument, StaysAsItWasWhenADocumentCannotBeRead) {
    EXPECT_NE(combine(), std::nullopt) << "nothing to join";
    add("1", "Sound", blankPdf(1));
    ASSERT_EQ(combine(), std::nullopt);
    const auto before = envelope_.combinedDocument;
    add("2", "Damaged", Data("%PDF-1.7"));
    EXPECT_NE(combine(), std::nullopt);
    envelope_.documents->back()->pdf.reset();
    EXPECT_NE(combine(), std::nullopt) << "no bytes and no file";
    EXPECT_EQ(envelope_.combinedDocument, before);
}

} // namespace
} // namespace norvane
