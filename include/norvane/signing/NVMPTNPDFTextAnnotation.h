#pragma once

#include <norvane/pdf/PdfDocument.h>
#include <norvane/signing/NVMPDFBaseAnnotation.h>

#include <memory>

namespace norvane {

/// The looks of a text annotation.
enum class NVMTextAnnotationState { Normal = 0, Highlighted = 1, Error = 2, ReadOnly = 3 };

/// A tab that shows text (text, company, title, full name, date signed, formula) as a free-text annotation.
class NVMPTNPDFTextAnnotation final : public NVMPDFBaseAnnotation {
  public:
    /// A new annotation on the page, beneath those that are there; null without a document. Nothing is
    /// updated where there is no viewer.
    static std::shared_ptr<NVMPTNPDFTextAnnotation>
    CreateWithTab(const AnnotatedTab& tab, const std::shared_ptr<PdfDocument>& document, const PdfPage& page,
                  const std::weak_ptr<AnnotationView>& view);

    bool isTextBased() const override { return true; }
    bool isImageBased() const override { return false; }
    bool isContentInvalid() const override;
    void updateErroneous() override;
    void refreshVisuals() override;
    /// A change takes effect at once: flag, look and viewer.
    void setEditable(bool isEditable) override;
    void setErroneous(bool isErroneous) override;

    void setStyleForState(NVMTextAnnotationState state);
    void setTextBorderForStyle(NVMTextAnnotationState state);
    void setTextColorForStyle(NVMTextAnnotationState state);
    void setTextBackgroundColorForStyle(NVMTextAnnotationState state);

  private:
    NVMTextAnnotationState currentState() const;
};

} // namespace norvane
