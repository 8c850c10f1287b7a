#include "tests/support/SamplePdf.h"

#include <norvane/pdf/NVMPDFDocument.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/pdf/PdfError.h>

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include <random>

namespace norvane {
namespace {

std::shared_ptr<PdfDocument> opened(const Data& bytes) {
    auto document = PdfDocument::open(bytes);
    if (!document) throw std::runtime_error(document.error().localizedDescription());
    return *document;
}

std::vector<double> widthsOf(const PdfDocument& document) {
    std::vector<double> widths;
    for (std::size_t i = 1; i <= document.pageCount(); ++i)
        widths.push_back(document.page(i)->size().width);
    return widths;
}

Data pdfOfWidth(int width, std::size_t pages) {
    return blankPdf(pages, "/MediaBox [0 0 " + std::to_string(width) + " 100]");
}

PdfErrorCode codeOf(const Data& bytes) {
    const auto document = PdfDocument::open(bytes);
    return document ? PdfErrorCode{} : static_cast<PdfErrorCode>(document.error().code);
}

TEST(PdfDocument, ReadsTheMediaBoxWhateverItsCornersAndRotation) {
    const auto odd = opened(blankPdf(1, "/MediaBox [700 900 100 100] /Rotate 90"));
    EXPECT_EQ(odd->page(1)->size(), (Size{600, 800}));
    const auto broken = opened(blankPdf(1, "/MediaBox [0 0 (a) 100]"));
    EXPECT_EQ(broken->page(1)->size(), (Size{612, 792}));
    const auto inherited =
        opened(pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                             "<< /Type /Pages /Count 1 /Kids [3 0 R] /MediaBox [0 0 50 60] >>",
                             "<< /Type /Page /Parent 2 0 R >>"}));
    EXPECT_EQ(inherited->page(1)->size(), (Size{50, 60}));
    EXPECT_FALSE(inherited->page(0));
    EXPECT_FALSE(inherited->page(2));
}

TEST(PdfDocument, JoinsAllPagesInOrderAndKeepsTheirNumbers) {
    const auto first = opened(pdfOfWidth(100, 2));
    const auto second = opened(pdfOfWidth(200, 1));
    auto joined = PdfDocument::join({first, second, first});
    ASSERT_TRUE(joined);
    EXPECT_EQ((*joined)->sourcePageCounts(), (std::vector<std::size_t>{2, 1, 2}));
    const auto saved = (*joined)->save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(problemsOf(*saved), "");
    EXPECT_EQ(widthsOf(*opened(*saved)), (std::vector<double>{100, 100, 200, 100, 100}));
    EXPECT_FALSE(PdfDocument::join({}));
}

TEST(PdfDocument, InsertsAheadOfAPageAndRefusesTooManyPages) {
    const auto document = opened(pdfOfWidth(100, 3));
    const auto inserted = opened(pdfOfWidth(200, 2));
    EXPECT_FALSE(document->insertDocument(*inserted, 1));
    EXPECT_EQ(widthsOf(*document), (std::vector<double>{100, 200, 200, 100, 100}));
    EXPECT_EQ(document->sourcePageCounts(), std::vector<std::size_t>{5});
    EXPECT_FALSE(document->insertDocument(*inserted, 99));
    EXPECT_EQ(document->sourcePageCounts(), (std::vector<std::size_t>{5, 2}));

    const auto huge = opened(blankPdf(PdfDocument::kMaximumPages));
    EXPECT_TRUE(document->insertDocument(*huge, 0));
    EXPECT_EQ(document->pageCount(), 7u);
    EXPECT_EQ(codeOf(blankPdf(PdfDocument::kMaximumPages + 1)), PdfErrorCode::TooLarge);
}

TEST(PdfDocument, CarriesFormFieldsIntoTheJoinedDocument) {
    const auto form = opened(pdfOfObjects(
        {"<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [4 0 R] >> >>",
         "<< /Type /Pages /Count 1 /Kids [3 0 R] >>",
         "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 100] /Annots [4 0 R] >>",
         "<< /Type /Annot /Subtype /Widget /FT /Tx /T (kept) /V (value) /Rect [0 0 9 9] /P 3 0 R >>"}));
    const auto saved = (*PdfDocument::join({form, form}))->save();
    ASSERT_TRUE(saved);
    const std::string_view text = saved->view();
    EXPECT_NE(text.find("/AcroForm"), std::string_view::npos);
    EXPECT_NE(text.find("(kept)"), std::string_view::npos);
    EXPECT_EQ(problemsOf(*saved), "");
}

TEST(PdfDocument, SavesTheSameBytesAndLeavesStreamsAlone) {
    const std::string content = "<< /Length 9 /Filter /ASCIIHexDecode >>\nstream\n71 51>   \nendstream";
    const auto bytes =
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count 1 /Kids [3 0 R] >>",
                      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Contents 4 0 R >>", content});
    const auto saved = opened(bytes)->save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(*saved, *opened(bytes)->save());
    EXPECT_NE(saved->view().find("71 51>"), std::string_view::npos);
}

TEST(PdfDocument, RefusesWhateverItWouldHaveToRepair) {
    EXPECT_EQ(codeOf(Data(std::string("hello"))), PdfErrorCode::Damaged);
    EXPECT_EQ(codeOf(Data()), PdfErrorCode::Damaged);
    const std::string sound(blankPdf(2).view());
    EXPECT_EQ(codeOf(Data(sound.substr(0, sound.size() / 2))), PdfErrorCode::Damaged);

    std::string moved = sound;
    moved.replace(moved.find("/Kids"), 5, "/Kid\x01");
    EXPECT_EQ(codeOf(Data(moved)), PdfErrorCode::Damaged);

    const auto named = PdfDocument::open(
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count 1 /Kids [3 0 R 2 0 R] >>",
                      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >>"}));
    ASSERT_FALSE(named);
    EXPECT_EQ(named.error().domain, kPdfErrorDomain);
    EXPECT_EQ(named.error().userInfo.at(std::string(kPdfObjectKey)), Value("object 2 0"));
}

TEST(PdfDocument, NeverShowsADamagedFileAsAShorterOne) {
    const std::string sound(opened(blankPdf(8))->save()->view());
    std::mt19937 random(7);
    int refused = 0;
    for (int i = 0; i < 400; ++i) {
        std::string mutant = sound;
        for (int n = 0; n < 3; ++n)
            mutant[random() % mutant.size()] = static_cast<char>(random());
        const auto document = PdfDocument::open(Data(mutant));
        if (document)
            EXPECT_EQ((*document)->pageCount(), 8u);
        else
            ++refused;
    }
    EXPECT_GT(refused, 100);
}

TEST(PdfDocument, RefusesBombsAndEncryptedFilesBeforeReadingThem) {
    const std::string encryption = "<< /Filter /Standard /V 1 /R 2 /O (o) /U (u) /P -4 >>";
    for (const std::string& entry : {encryption, std::string("3 0 R")})
        EXPECT_EQ(codeOf(pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                                       "<< /Type /Pages /Count 0 /Kids [] >>", encryption},
                                      "/ID [(a) (a)] /Encrypt " + entry)),
                  PdfErrorCode::Encrypted);

    std::string chain = "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Next 4 0 R >>";
    std::vector<std::string> objects{"<< /Type /Catalog /Pages 2 0 R >>",
                                     "<< /Type /Pages /Count 1 /Kids [3 0 R] >>", chain};
    for (int i = 5; i < 20'000; ++i)
        objects.push_back("<< /Next " + std::to_string(i) + " 0 R >>");
    objects.emplace_back("<< >>");
    EXPECT_EQ(codeOf(pdfOfObjects(objects)), PdfErrorCode::TooLarge);
}

/// A document whose catalog refers to a text of that many blanks, all objects in compressed streams.
Data compressedPdf(std::size_t blanks) {
    QPDF qpdf;
    qpdf.emptyPDF();
    qpdf.addPage(QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 9 9] >>"), false);
    qpdf.getRoot().replaceKey("/Bulk",
                              qpdf.makeIndirectObject(QPDFObjectHandle::newString(std::string(blanks, ' '))));
    QPDFWriter writer(qpdf);
    writer.setOutputMemory();
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.write();
    const auto buffer = writer.getBufferSharedPointer();
    return Data(buffer->getBuffer(), buffer->getSize());
}

TEST(PdfDocument, IdentifiesEachFileByItsBytes) {
    const auto identifiersOf = [](const Data& file) {
        QPDF pdf;
        pdf.processMemoryFile("file", file.view().data(), file.size());
        auto ids = pdf.getTrailer().getKey("/ID").getArrayAsVector();
        return std::pair(ids.at(0).getStringValue(), ids.at(1).getStringValue());
    };
    const Data other = *opened(pdfOfWidth(301, 2))->save();
    for (const Data& original : {*opened(pdfOfWidth(300, 2))->save(), compressedPdf(10)}) {
        const auto document = opened(original);
        const auto page = *document->page(1);
        page.pushFront(page.createRubberStamp({10, 50, 50, 10}));
        const auto [permanent, changing] = identifiersOf(*document->save());
        EXPECT_EQ(permanent, identifiersOf(original).first);
        EXPECT_NE(changing, identifiersOf(original).second);
        EXPECT_NE(changing, identifiersOf(other).second);
    }
}

TEST(PdfDocument, BoundsWhatCompressedObjectsUnfoldTo) {
    const Data modest = compressedPdf(1000);
    ASSERT_NE(modest.view().find("/ObjStm"), std::string_view::npos);
    const auto saved = opened(modest)->save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(problemsOf(*saved), "");
    const Data bomb = compressedPdf(PdfDocument::kMaximumObjectStreamBytes);
    EXPECT_LT(bomb.size(), 200'000u);
    EXPECT_EQ(codeOf(bomb), PdfErrorCode::TooLarge);
}

TEST(PdfDocument, TellsOfSignaturesThatSavingWouldVoid) {
    const auto bytes =
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count 1 /Kids [3 0 R] >>",
                      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >>",
                      "<< /Type /Sig /ByteRange [0 1 2 3] /Contents <00> >>"});
    EXPECT_TRUE(opened(bytes)->hasDigitalSignatures());
    EXPECT_TRUE((*PdfDocument::join({opened(blankPdf(1)), opened(bytes)}))->hasDigitalSignatures());
    EXPECT_FALSE(opened(blankPdf(1))->hasDigitalSignatures());
}

TEST(NVMPDFDocument, ListsTheSourceDocumentsOfTheCombinedPdf) {
    const auto document = NVMPDFDocument::documentWithData(blankPdf(3), {1, 2});
    ASSERT_TRUE(document.isValid());
    ASSERT_EQ(document.documentProviders().size(), 2u);
    EXPECT_EQ(document.documentProviders()[1].pageCount, 2u);
    EXPECT_EQ(document.sizeForPage(3), (Size{612, 792}));
    EXPECT_EQ(document.sizeForPage(4), Size{});
    EXPECT_EQ(NVMPDFDocument::documentWithData(blankPdf(3), {1, 1}).documentProviders().size(), 1u);

    const auto broken = NVMPDFDocument::documentWithData(Data(std::string("no")));
    EXPECT_FALSE(broken.isValid());
    EXPECT_TRUE(broken.error());
    EXPECT_EQ(broken.pageCount(), 0u);
}

} // namespace
} // namespace norvane
