#pragma once

#include <norvane/signing/NVMPDFBaseAnnotation.h>

#include <map>
#include <memory>
#include <string>

namespace norvane {

/// Finds the annotation of a tab. Main thread only.
class NVMPTNPDFAnnotationManager {
  public:
    /// Under its tab's identifier; an annotation that was there is replaced.
    void registerPDFAnnotationForNVMAnnotation(const std::shared_ptr<NVMPDFBaseAnnotation>& annotation);
    void unregisterPDFAnnotationForNVMAnnotation(const std::shared_ptr<NVMPDFBaseAnnotation>& annotation);
    void unregisterPDFAnnotationWithUniqueId(const std::string& tabId);
    /// Null when none is registered.
    std::shared_ptr<NVMPDFBaseAnnotation> pdfAnnotationWithUniqueId(const std::string& tabId) const;

    const std::map<std::string, std::shared_ptr<NVMPDFBaseAnnotation>>& annotationsForTabId() const {
        return annotationsForTabId_;
    }

  private:
    std::map<std::string, std::shared_ptr<NVMPDFBaseAnnotation>> annotationsForTabId_;
};

} // namespace norvane
