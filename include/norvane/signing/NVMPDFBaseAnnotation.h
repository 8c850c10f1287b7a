#pragma once

#include <norvane/pdf/AnnotationView.h>
#include <norvane/pdf/PdfAnnotation.h>
#include <norvane/pdf/PdfPage.h>
#include <norvane/platform/Geometry.h>
#include <norvane/signature/Image.h>
#include <norvane/signing/AnnotatedTab.h>

#include <memory>
#include <optional>
#include <string>

namespace norvane {

/// Added to the width of a measured text, in points.
inline constexpr double NVM_WIDTH_PADDING = 10;

/// A tab shown on a page: the engine's annotation, and the state that decides its look. Base of the text and
/// the image annotation; what it leaves to them throws NVMException ("NSInternalInconsistencyException")
/// here. Main thread only. Positions and sizes are in points.
class NVMPDFBaseAnnotation {
  public:
    NVMPDFBaseAnnotation() = default;
    virtual ~NVMPDFBaseAnnotation() = default;
    NVMPDFBaseAnnotation(const NVMPDFBaseAnnotation&) = delete;
    NVMPDFBaseAnnotation& operator=(const NVMPDFBaseAnnotation&) = delete;

    /// The preferred size of a new annotation; 84 x 19 for 11 and more. Text is deliberately one point higher
    /// than in `defaultSizeForTagType`.
    static Size defaultSizeForTabType(NVMTagType type);
    /// All but full name, date signed and formula, which the kit fills in.
    static bool isEditableTabType(NVMTagType type);
    /// Whether annotations of the type grow with their text.
    static bool shouldIncreaseWidthForTabType(NVMTagType type);
    /// The type's display name, empty for a number that names no type.
    static std::string subjectForTabType(NVMTagType type);
    /// From the top-left corner of a page to its bottom-left one.
    static Point pdfPositionWithPosition(const Point& position, const Size& pageSize);
    /// Where the tab lies on the page: never smaller than the preferred size, by default the type's. y1 is
    /// the top edge, deliberately above y2.
    static PdfRect ptnRectFromTab(const AnnotatedTab& tab, const PdfPage& page);
    static PdfRect ptnRectFromTab(const AnnotatedTab& tab, const PdfPage& page, const Size& preferredSize);

    virtual bool isTextBased() const;
    virtual bool isImageBased() const;
    /// Whether what the recipient entered is missing or no choice.
    virtual bool isContentInvalid() const;
    /// Sets `isErroneous` from the other flags and the content.
    virtual void updateErroneous() {}
    /// Draws the annotation anew and updates the viewer.
    virtual void refreshVisuals() {}
    /// The image to show; nothing takes it away.
    virtual void setContent(const std::optional<Image>&) {}

    /// Takes over the tab: flags, subject, bounding box, and the unique identifier, which is the tab's.
    void setupWithTab(const AnnotatedTab& tab);

    const AnnotatedTab& tab() const { return tab_; }
    /// A new state of the same tab. Shown by the next `refreshVisuals`.
    void setTab(const AnnotatedTab& tab) { tab_ = tab; }
    const PdfAnnotation& pdfAnnotation() const { return pdfAnnotation_; }
    /// Page of the document, from 1; 0 before there is an engine annotation.
    std::size_t page() const { return pdfAnnotation_.pageNumber(); }

    /// The contents for text, company, title, full name and date signed, else the type's display name.
    /// Setting it writes the contents of those and of formulas: that a formula shows a value but does not
    /// report it is deliberate.
    std::string subject() const;
    void setSubject(const std::string& subject);
    std::optional<std::string> value; ///< as entered

    Rect boundingBox() const { return boundingBox_; }
    void setBoundingBox(const Rect& box) { boundingBox_ = box; }
    Rect defaultBoundingBoxWithScaleValue(double scale) const;
    int rotation = 0; ///< kept, never applied
    Size minimumSize;

    bool isEditable() const { return isEditable_; }
    virtual void setEditable(bool isEditable) { isEditable_ = isEditable; }
    /// Editable when the type is, the tab is that recipient's, and it is not locked.
    void setEditableForCurrentRecipientId(const std::string& recipientId);
    bool isRequired() const { return isRequired_; }
    void setRequired(bool isRequired) { isRequired_ = isRequired; }
    bool isHighlighted() const { return isHighlighted_; }
    void setHighlighted(bool isHighlighted) { isHighlighted_ = isHighlighted; }
    bool isErroneous() const { return isErroneous_; }
    virtual void setErroneous(bool isErroneous) { isErroneous_ = isErroneous; }
    bool isDeleted() const { return false; }
    bool isSignatureOrInitials() const;

    /// Shows the text. A text of a type that grows widens the annotation; it never shrinks. Nothing is
    /// ignored.
    void setVisualContent(const std::optional<std::string>& text);
    void setContentIncreaseWidthToFitContent(const std::optional<std::string>& text, bool increaseWidth);
    /// The text's size on one line, with the padding.
    Size getContentSizeBasedOnContent(const std::string& text) const;
    void increaseWidthToFitSize(const Size& size);
    /// Shows the type's display name in an empty text annotation, when placeholders are configured.
    void setDefaultVisualContentIfEmpty();
    /// Whether the text shown is only the placeholder.
    bool hasDefaultSubjectAsContent() const;

    std::string getUniqueId() const { return pdfAnnotation_.uniqueId(); }
    void setUniqueId(const std::string& uniqueId) { pdfAnnotation_.setUniqueId(uniqueId); }
    int getObjectNumber() const { return pdfAnnotation_.objectNumber(); }
    void updateOnViewController() const;
    std::string description() const; ///< for logs: no content

  protected:
    std::string trimmedContents() const;

    PdfAnnotation pdfAnnotation_;
    std::weak_ptr<AnnotationView> pdfViewCtrl_;
    std::optional<PdfPage> page_;

  private:
    AnnotatedTab tab_;
    Rect boundingBox_;
    bool isEditable_ = false;
    bool isRequired_ = false;
    bool isHighlighted_ = false;
    bool isErroneous_ = false;
};

} // namespace norvane
