#include "tests/support/SamplePdf.h"

#include <norvane/pdf/PdfDocument.h>

#include <gtest/gtest.h>

#include <cmath>

namespace norvane {
namespace {

constexpr Color kRed{0.8, 0.1, 0.1, 1};

std::shared_ptr<PdfDocument> blank(std::size_t pages,
                                   const std::string& entries = "/MediaBox [0 0 300 200]") {
    auto document = PdfDocument::open(blankPdf(pages, entries));
    if (!document) throw std::runtime_error(document.error().localizedDescription());
    return *document;
}

Image checkered(int width, int height, std::uint8_t alpha = 255) {
    return Image::generate(width, height, 1, [&](std::uint8_t* pixel) {
        for (int i = 0; i < width * height; ++i, pixel += 4) {
            const bool isDark = (i % width < width / 2) == (i / width < height / 2);
            pixel[0] = pixel[1] = pixel[2] = isDark ? 0 : 255;
            pixel[3] = alpha;
        }
    });
}

std::size_t occurrences(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// The mean difference of all components, 0 to 255.
double difference(const RenderedPage& a, const RenderedPage& b) {
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    double sum = 0;
    for (std::size_t i = 0; i < a.rgb.size() && i < b.rgb.size(); ++i)
        sum += std::abs(static_cast<unsigned char>(a.rgb[i]) - static_cast<unsigned char>(b.rgb[i]));
    return sum / static_cast<double>(a.rgb.size());
}

TEST(PdfAnnotation, KeepsTheRectangleAsGivenAndWritesItNormalised) {
    const auto document = blank(1, "/MediaBox [10 20 310 220]");
    const auto page = *document->page(1);
    const auto stamp = page.createRubberStamp({30, 150, 80, 100});
    page.pushFront(stamp);
    EXPECT_EQ(stamp.rect(), (PdfRect{30, 150, 80, 100}));
    const auto saved = document->save();
    ASSERT_TRUE(saved);
    EXPECT_NE(saved->view().find("/Rect [ 40 120 90 170 ]"), std::string_view::npos) << saved->view();
}

TEST(PdfAnnotation, ShowsStampsAtTheSamePlaceInEveryViewer) {
    const auto document = blank(1, "/MediaBox [10 20 310 218]");
    const auto page = *document->page(1);
    auto stamp = page.createRubberStamp({30, 150, 150, 66}); // larger than its image
    stamp.setAppearance(document->imageFor(checkered(60, 60)), 30, 90, 60, 60);
    page.pushFront(stamp);
    auto clear = page.createRubberStamp({204, 150, 264, 90});
    clear.setAppearance(document->imageFor(checkered(60, 60, 120)), 204, 90, 60, 60);
    page.pushFront(clear);

    const auto saved = document->save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(problemsOf(*saved), "");
    const auto poppler = renderWithPoppler(*saved, 1);
    const auto mupdf = renderWithMupdf(*saved, 1);
    EXPECT_LT(difference(poppler, mupdf), 2.0);
    for (const auto& shown : {poppler, mupdf}) {
        const int all = shown.inkCount(0, 0, shown.width, shown.height);
        const int stamped = shown.inkCount(24, 39, 52, 52); // 60 points are 50 pixels
        EXPECT_NEAR(stamped, 50 * 50 / 2, 60);
        EXPECT_EQ(all, stamped + shown.inkCount(169, 39, 52, 52));
        EXPECT_GT(all, stamped);
    }
}

TEST(PdfAnnotation, DrawsTextsOfAnyScriptInsideTheirBox) {
    for (const char* text :
         {"Signed by Jos\u00e9 (\u20ac 5)",
          "\u0418\u0432\u0430\u043d \u0421\u0438\u0434\u043e\u0440\u043e\u0432", "\u05e9\u05dc\u05d5\u05dd",
          "\u0645\u0631\u062d\u0628\u0627", "two\nlines",
          "a text that is far too long for one line of its box and for two of them as well"}) {
        const auto document = blank(1);
        const auto page = *document->page(1);
        auto annotation = page.createFreeText({50, 150, 190, 125});
        annotation.setBorderStyle({2, 10, 20});
        annotation.setLineColor(kRed);
        annotation.setContents(text);
        annotation.refreshAppearance();
        page.pushFront(annotation);
        EXPECT_EQ(annotation.contents(), text);

        const auto saved = document->save();
        ASSERT_TRUE(saved);
        EXPECT_EQ(problemsOf(*saved), "") << text;
        const auto poppler = renderWithPoppler(*saved, 1);
        const auto mupdf = renderWithMupdf(*saved, 1);
        EXPECT_LT(difference(poppler, mupdf), 2.0) << text;
        for (const auto& shown : {poppler, mupdf}) {
            const int box = shown.inkCount(41, 41, 118, 23);
            EXPECT_EQ(shown.inkCount(0, 0, shown.width, shown.height), box) << text;
            EXPECT_GT(shown.inkCount(45, 45, 110, 14), 20) << text;
        }
    }
}

TEST(PdfAnnotation, WritesAppearancesUncompressedAndEachImageOnce) {
    const auto document = blank(2);
    const Image image = checkered(64, 64);
    const Image again = checkered(64, 64);
    for (std::size_t number : {1u, 2u}) {
        const auto page = *document->page(number);
        for (int i = 0; i < 5; ++i) {
            auto stamp = page.createRubberStamp({10, 50, 50, 10});
            stamp.setAppearance(document->imageFor(i % 2 == 0 ? image : again), 10, 10, 40, 40);
            page.pushFront(stamp);
        }
    }
    const auto saved = document->save();
    ASSERT_TRUE(saved);
    EXPECT_EQ(occurrences(saved->view(), "/Subtype /Image"), 1u);
    EXPECT_EQ(occurrences(saved->view(), "40 0 0 40 10 10 cm"), 10u);
}

TEST(PdfAnnotation, JoinsWhatWasNeverSaved) {
    const auto document = blank(1);
    {
        const auto page = *document->page(1);
        auto stamp = page.createRubberStamp({10, 50, 50, 10});
        stamp.setAppearance(document->imageFor(checkered(8, 8)), 10, 10, 40, 40);
        page.pushFront(stamp);
        auto text = page.createFreeText({60, 50, 150, 20});
        text.setContents("unsaved");
        text.refreshAppearance();
        page.pushFront(text);
    }
    const auto joined = (*PdfDocument::join({document, blank(1)}))->save();
    ASSERT_TRUE(joined);
    EXPECT_EQ(occurrences(joined->view(), "/Subtype /Image"), 1u);
    EXPECT_EQ(occurrences(joined->view(), "(unsaved) Tj"), 1u);
    EXPECT_EQ(problemsOf(*joined), "");
}

TEST(PdfAnnotation, DrawsAnewWithoutLeavingTheOldLookBehind) {
    const auto document = blank(1);
    const auto page = *document->page(1);
    auto annotation = page.createFreeText({10, 50, 100, 20});
    page.pushFront(annotation);
    page.pushFront(annotation);
    std::string saved;
    for (const char* text : {"first", "second"}) {
        annotation.setContents(text);
        annotation.refreshAppearance();
        saved = (*document->save()).view();
        EXPECT_NE(saved.find("(" + std::string(text) + ") Tj"), std::string::npos);
    }
    EXPECT_EQ(saved.find("(first)"), std::string::npos);
    EXPECT_NE(saved.find("(second) Tj"), std::string::npos);
    EXPECT_EQ(occurrences(saved, "/FreeText"), 1u);
}

TEST(PdfAnnotation, FindsTheTopmostAnnotationAtAPoint) {
    const auto document = blank(1, "/MediaBox [10 20 310 220]");
    const auto page = *document->page(1);
    auto below = page.createFreeText({10, 60, 60, 10});
    auto above = page.createFreeText({40, 60, 90, 10});
    above.setUniqueId("above \u00e9");
    page.pushFront(above);
    page.pushFront(below);
    EXPECT_EQ(page.annotationAt({50, 30}), above);
    EXPECT_EQ(page.annotationAt({20, 30}), below);
    EXPECT_FALSE(page.annotationAt({95, 30}));
    EXPECT_EQ(page.annotationAt({95, 30}, 6), above);

    const auto reopened = *PdfDocument::open(*document->save());
    const auto found = reopened->page(1)->annotationAt({70, 30});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->uniqueId(), "above \u00e9");
    EXPECT_EQ(found->rect(), (PdfRect{40, 10, 90, 60}));
    EXPECT_TRUE(found->flag(PdfAnnotationFlag::Print));
}

TEST(PdfAnnotation, KeepsListsSharedBetweenPagesApart) {
    const auto document = *PdfDocument::open(
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count 2 /Kids [3 0 R 4 0 R] >>",
                      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] /Annots 5 0 R >>",
                      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] /Annots 5 0 R >>",
                      "[<< /Type /Annot /Subtype /Link /Rect [1 1 2 2] >>]"}));
    const auto page = *document->page(1);
    page.pushFront(page.createFreeText({10, 60, 60, 10}));
    EXPECT_TRUE(document->page(1)->annotationAt({30, 30}));
    EXPECT_FALSE(document->page(2)->annotationAt({30, 30}));
    EXPECT_TRUE(document->page(1)->annotationAt({1.5, 1.5}));
}

TEST(PdfAnnotation, MeasuresTextInTheFontThatItShows) {
    EXPECT_NEAR(pdfTextWidth("Hi", 10), 7.22 + 2.22, 1e-9);
    EXPECT_GT(pdfTextWidth("\u0418\u0432\u0430\u043d", 10), 20);
    EXPECT_EQ(pdfTextWidth("", 10), 0);
}

} // namespace
} // namespace norvane
