#include <norvane/signing/NVMPTNPDFAnnotationManager.h>

namespace norvane {

void NVMPTNPDFAnnotationManager::registerPDFAnnotationForNVMAnnotation(
    const std::shared_ptr<NVMPDFBaseAnnotation>& annotation) {
    annotationsForTabId_[annotation->tab().tabId] = annotation;
}

void NVMPTNPDFAnnotationManager::unregisterPDFAnnotationForNVMAnnotation(
    const std::shared_ptr<NVMPDFBaseAnnotation>& annotation) {
    unregisterPDFAnnotationWithUniqueId(annotation->tab().tabId);
}

void NVMPTNPDFAnnotationManager::unregisterPDFAnnotationWithUniqueId(const std::string& tabId) {
    annotationsForTabId_.erase(tabId);
}

std::shared_ptr<NVMPDFBaseAnnotation>
NVMPTNPDFAnnotationManager::pdfAnnotationWithUniqueId(const std::string& tabId) const {
    const auto found = annotationsForTabId_.find(tabId);
    return found == annotationsForTabId_.end() ? nullptr : found->second;
}

} // namespace norvane
