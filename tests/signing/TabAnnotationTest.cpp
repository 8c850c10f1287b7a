#include "tests/support/KitFixture.h"
#include "tests/support/SamplePdf.h"

#include <norvane/platform/NVMException.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/signature/NVMSignatureCleanup.h>
#include <norvane/signing/NVMGeometry.h>
#include <norvane/signing/NVMPTNPDFAnnotationManager.h>
#include <norvane/signing/NVMPTNPDFImageAnnotation.h>
#include <norvane/signing/NVMPTNPDFTextAnnotation.h>
#include <norvane/signing/NVMPTNToolManager.h>

namespace norvane {
namespace {

class RecordingAnnotationView final : public AnnotationView {
  public:
    void updateAnnotation(const PdfAnnotation& annotation, std::size_t pageNumber) override {
        EXPECT_EQ(annotation.pageNumber(), pageNumber);
        ++updates;
    }
    int updates = 0;
};

class TabAnnotation : public KitFixture {
  protected:
    void SetUp() override {
        KitFixture::SetUp();
        document_ = *PdfDocument::open(blankPdf(2));
        page_ = *document_->page(2);
    }

    static AnnotatedTab tab(NVMTagType type) {
        AnnotatedTab tab;
        tab.tabId = "tab-" + std::to_string(type);
        tab.type = type;
        tab.recipientId = "1";
        tab.pageNumber = 2;
        tab.originX = 100;
        tab.originY = 50;
        return tab;
    }
    std::shared_ptr<NVMPTNPDFTextAnnotation> text(const AnnotatedTab& tab) {
        return NVMPTNPDFTextAnnotation::CreateWithTab(tab, document_, *page_, view_);
    }
    std::shared_ptr<NVMPTNPDFImageAnnotation> image(const AnnotatedTab& tab) {
        return NVMPTNPDFImageAnnotation::CreateWithTab(tab, document_, *page_, view_);
    }
    static Image ink(int width, int height) {
        return Image::generate(width, height, 1, [&](std::uint8_t* pixels) {
            for (int i = 0; i < width * height * 4; ++i)
                pixels[i] = i % 4 == 3 ? 255 : 0;
        });
    }

    std::shared_ptr<PdfDocument> document_;
    std::optional<PdfPage> page_;
    std::shared_ptr<RecordingAnnotationView> view_ = std::make_shared<RecordingAnnotationView>();
};

TEST_F(TabAnnotation, LiesWhereTheTabIsAndIsNeverSmallerThanItsDefaultSize) {
    AnnotatedTab placed = tab(NVMTabTypeText);
    placed.width = placed.height = 10;
    EXPECT_EQ(NVMPDFBaseAnnotation::ptnRectFromTab(placed, *page_), (PdfRect{100, 742, 184, 723}));
    placed.width = 200;
    placed.height = 30;
    EXPECT_EQ(text(placed)->pdfAnnotation().rect(), (PdfRect{100, 742, 300, 712}));
    EXPECT_EQ(NVMPDFBaseAnnotation::defaultSizeForTabType(11), (Size{84, 19}));
    EXPECT_FALSE(NVMPTNPDFTextAnnotation::CreateWithTab(placed, nullptr, *page_, view_));
    EXPECT_FALSE(NVMPTNPDFImageAnnotation::CreateWithTab(placed, nullptr, *page_, view_));
}

TEST_F(TabAnnotation, WidensForItsTextAndNeverShrinks) {
    const auto company = text(tab(NVMTabTypeCompany));
    const std::string name = "The Very Long Company Name Incorporated";
    company->setVisualContent(name);
    const double width = company->pdfAnnotation().rect().width();
    EXPECT_NEAR(width, pdfTextWidth(name, 12) + NVM_WIDTH_PADDING, 1e-9);
    company->setVisualContent("Short");
    company->setVisualContent(std::nullopt);
    EXPECT_EQ(company->pdfAnnotation().rect().width(), width);
    EXPECT_EQ(company->subject(), "Short");

    const auto entry = text(tab(NVMTabTypeText));
    entry->setVisualContent(name);
    EXPECT_EQ(entry->pdfAnnotation().rect().width(), 84);
}

TEST_F(TabAnnotation, ReportsAFormulasNameThoughItShowsItsValue) {
    AnnotatedTab formula = tab(NVMTabTypeFormula);
    formula.value = "42";
    const auto annotation = text(formula);
    EXPECT_EQ(annotation->pdfAnnotation().contents(), "42");
    EXPECT_EQ(annotation->subject(), "Formula");
}

TEST_F(TabAnnotation, IsEditableByItsOwnRecipientOnly) {
    const auto entry = text(tab(NVMTabTypeText));
    EXPECT_TRUE(entry->isEditable());
    entry->setEditableForCurrentRecipientId("2");
    EXPECT_FALSE(entry->isEditable());
    EXPECT_TRUE(entry->pdfAnnotation().flag(PdfAnnotationFlag::ReadOnly));
    const int updates = view_->updates;
    entry->setEditableForCurrentRecipientId("2");
    EXPECT_EQ(view_->updates, updates);
    entry->setEditableForCurrentRecipientId("1");
    EXPECT_FALSE(entry->pdfAnnotation().flag(PdfAnnotationFlag::ReadOnly));
    EXPECT_EQ(view_->updates, updates + 1);

    const auto fullName = text(tab(NVMTabTypeFullName));
    fullName->setEditableForCurrentRecipientId("1");
    EXPECT_FALSE(fullName->isEditable());
    for (const auto flag :
         {PdfAnnotationFlag::ReadOnly, PdfAnnotationFlag::Locked, PdfAnnotationFlag::LockedContents})
        EXPECT_TRUE(fullName->pdfAnnotation().flag(flag));
}

TEST_F(TabAnnotation, ShowsAPlaceholderThatIsNoEntry) {
    AnnotatedTab required = tab(NVMTabTypeTitle);
    required.required = true;
    const auto title = text(required);
    EXPECT_EQ(title->subject(), "Title");
    EXPECT_TRUE(title->isContentInvalid());
    title->updateErroneous();
    EXPECT_TRUE(title->isErroneous());
    title->setHighlighted(true);
    title->updateErroneous();
    EXPECT_FALSE(title->isErroneous());
    title->setVisualContent("Director");
    EXPECT_FALSE(title->isContentInvalid());

    title->setVisualContent(" \n");
    title->setDefaultVisualContentIfEmpty();
    EXPECT_TRUE(title->hasDefaultSubjectAsContent());
    ASSERT_FALSE(nvm_setDefaults("false", NVM_SETUP_OFFLINE_SIGNING_USE_PLACEHOLDER_TAB_VALUE));
    title->setVisualContent("");
    title->setDefaultVisualContentIfEmpty();
    EXPECT_EQ(title->subject(), "");
}

TEST_F(TabAnnotation, MarksARequiredSignatureUntilItIsThere) {
    AnnotatedTab required = tab(NVMTabTypeSignHere);
    required.required = true;
    const auto annotation = image(required);
    annotation->updateErroneous();
    EXPECT_TRUE(annotation->isErroneous());
    annotation->setContent(ink(300, 100));
    annotation->updateErroneous();
    EXPECT_FALSE(annotation->isErroneous());
    annotation->setContent(std::nullopt);
    EXPECT_TRUE(annotation->isContentInvalid());

    const auto radio = image(tab(NVMTabTypeRadio));
    EXPECT_TRUE(radio->isContentInvalid());
    radio->isContentValidForTabGroup = true;
    EXPECT_FALSE(radio->isContentInvalid());
}

TEST_F(TabAnnotation, StampsTheImageAtTheTopLeftKeepingItsShape) {
    AnnotatedTab framed = tab(NVMTabTypeSignHere);
    framed.originX = 60;
    framed.originY = 72;
    framed.width = 90;
    framed.height = 60;
    const auto annotation = image(framed);
    annotation->setContent(ink(300, 100)); // fits as 90 x 30
    EXPECT_EQ(annotation->pdfAnnotation().rect(), (PdfRect{60, 720, 150, 660}));
    const auto saved = document_->save();
    ASSERT_TRUE(saved);
    for (const auto& shown : {renderWithPoppler(*saved, 2), renderWithMupdf(*saved, 2)}) {
        EXPECT_NEAR(shown.inkCount(0, 0, shown.width, shown.height), 75 * 25, 80);
        EXPECT_NEAR(shown.inkCount(50, 60, 75, 25), 75 * 25, 80);
    }
}

TEST_F(TabAnnotation, DrawsALookForEveryStateOfAnEmptyField) {
    for (const auto type : {NVMTabTypeSignHere, NVMTabTypeInitialHere, NVMTabTypeCheckbox, NVMTabTypeRadio}) {
        AnnotatedTab shown = tab(type);
        shown.required = true;
        const auto annotation = image(shown);
        std::vector<Image> looks{annotation->annotationImage()};
        const auto addLook = [&] {
            const Image look = annotation->annotationImage();
            for (const Image& other : looks)
                EXPECT_FALSE(look == other) << type << ", look " << looks.size();
            looks.push_back(look);
        };
        annotation->setErroneous(true);
        addLook();
        annotation->setErroneous(false);
        annotation->setHighlighted(true);
        addLook();
        annotation->setHighlighted(false);
        annotation->setEditable(false);
        addLook();
        if (!annotation->isSignatureOrInitials()) {
            shown.selected = true;
            annotation->setTab(shown);
            addLook();
        }
        const Rect box = annotation->boundingBox();
        for (const Image& look : looks) {
            EXPECT_EQ(look.size(), (Size{box.width, box.height}));
            const auto drawn = nvm_imageWithTransparentCropped(look);
            ASSERT_TRUE(drawn);
            EXPECT_GT(drawn->height(), look.height() * 9 / 10);
        }
    }
    EXPECT_EQ(NVMGeometry::roundFloat(1.3, 1), 1);
    EXPECT_EQ(NVMGeometry::roundFloat(1.3, 2), 1.5);
}

TEST_F(TabAnnotation, IsFoundByItsTab) {
    NVMPTNPDFAnnotationManager manager;
    const auto entry = text(tab(NVMTabTypeText));
    manager.registerPDFAnnotationForNVMAnnotation(entry);
    EXPECT_EQ(manager.pdfAnnotationWithUniqueId(entry->getUniqueId()), entry);
    manager.unregisterPDFAnnotationForNVMAnnotation(entry);
    EXPECT_FALSE(manager.pdfAnnotationWithUniqueId("tab-3"));
}

struct RecordingTapDelegate final : NVMPTNToolManagerDelegate {
    void pdfViewControllerDidTapOnTextAnnotation(const Annotation&, const Point&) override {
        taps += "text ";
    }
    void pdfViewControllerDidTapOnImageAnnotation(const Annotation&, const Point&) override {
        taps += "image ";
    }
    void pdfViewControllerDidTapOnAnnotation(const Annotation& annotation, const Point&) override {
        taps += annotation->tab().tabId + " ";
    }
    void pdfViewControllerDidTapOnPageView(const Point&) override { taps += "page "; }
    std::string taps;
};

TEST_F(TabAnnotation, HearsOfTapsOnIt) {
    NVMPTNPDFAnnotationManager manager;
    AnnotatedTab aside = tab(NVMTabTypeCheckbox);
    aside.originX = 400;
    manager.registerPDFAnnotationForNVMAnnotation(image(aside));
    const auto fullName = text(tab(NVMTabTypeFullName));
    manager.registerPDFAnnotationForNVMAnnotation(fullName);
    const auto delegate = std::make_shared<RecordingTapDelegate>();
    const NVMPTNToolManager tools(document_, delegate, manager);
    tools.handleTap(2, {405, 735}, {});
    tools.handleTap(2, {110, 735}, {});
    tools.handleTap(2, {110, 600}, {});
    tools.handleTap(1, {110, 735}, {});
    tools.handleTap(0, {110, 735}, {});
    manager.unregisterPDFAnnotationForNVMAnnotation(fullName);
    tools.handleTap(2, {110, 735}, {});
    EXPECT_EQ(delegate->taps, "image tab-4 text page page page ");
}

TEST_F(TabAnnotation, WorksWithoutAViewerAndAfterTheDocumentWentAway) {
    view_.reset();
    const auto signature = image(tab(NVMTabTypeSignHere));
    document_.reset();
    signature->setContent(ink(10, 10));
    EXPECT_TRUE(signature->image());
    EXPECT_THROW((void)NVMPDFBaseAnnotation().isContentInvalid(), NVMException);
}

} // namespace
} // namespace norvane
