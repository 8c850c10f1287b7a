#pragma once

#include <norvane/pdf/PdfDocument.h>
#include <norvane/signing/NVMPDFBaseAnnotation.h>

#include <memory>
#include <optional>

namespace norvane {

/// A tab that shows an image (sign here, initial here, check box, radio button) as a rubber-stamp annotation:
/// the adopted signature or initials, else a drawn look.
class NVMPTNPDFImageAnnotation final : public NVMPDFBaseAnnotation {
  public:
    /// A new annotation on the page, beneath those that are there; null without a document. Nothing is
    /// updated where there is no viewer.
    static std::shared_ptr<NVMPTNPDFImageAnnotation>
    CreateWithTab(const AnnotatedTab& tab, const std::shared_ptr<PdfDocument>& document, const PdfPage& page,
                  const std::weak_ptr<AnnotationView>& view);

    bool isTextBased() const override { return false; }
    bool isImageBased() const override { return true; }
    bool isContentInvalid() const override;
    void updateErroneous() override;
    void refreshVisuals() override;
    void setContent(const std::optional<Image>& image) override;
    void setErroneous(bool isErroneous) override;

    const std::optional<Image>& image() const { return image_; } ///< adopted, not drawn
    /// Of radio buttons: whether some button of the group is chosen.
    bool isContentValidForTabGroup = false;

    /// Gives the bounding box a new size and draws anew.
    void updateSizeWithWidth(double width, double height);
    /// The image as the document holds it.
    static PdfImage ptnImageForUIImage(const Image& image, PdfDocument& document);

    // Drawing.
    Image annotationImage() const; ///< what is shown now
    bool shouldMaintainAspectRatio() const { return isSignatureOrInitials(); }
    Rect innerFrame() const; ///< the bounding box less the stroke
    double defaultStrokeWidth() const;
    double defaultHighlightWidth() const;

  private:
    Image drawnLook() const;

    std::optional<Image> image_;
    std::weak_ptr<PdfDocument> pdfDocument_;
};

} // namespace norvane
