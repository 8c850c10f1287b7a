#pragma once

#include "src/signing/DecodedImages.h"

#include <norvane/pdf/AnnotationView.h>
#include <norvane/signing/AnnotatedTab.h>
#include <norvane/signing/NVMPDFBaseAnnotation.h>

#include <memory>

namespace norvane {

class PdfDocument;
struct NVMTab;

/// Sign here, initial here, check box, radio: shown as images. All others are shown as text.
bool isImageTabType(NVMTabType type);

/// What an annotation shows of a tab, as the tab stands now.
AnnotatedTab annotatedTabOf(const NVMTab& tab);

/// A new annotation of the tab on that page (from 1) of the document. Null when the document
/// has no such page.
std::shared_ptr<NVMPDFBaseAnnotation> createTabAnnotation(const NVMTab& tab,
                                                          const std::shared_ptr<PdfDocument>& document,
                                                          int page, const std::weak_ptr<AnnotationView>& view,
                                                          DecodedImages& images);

/// Brings an image annotation up to date with the tab: its adopted image, whether it is checked.
void showTabContent(NVMPDFBaseAnnotation& annotation, const NVMTab& tab, DecodedImages& images);

} // namespace norvane
