#pragma once

#include <norvane/store/FetchRequest.h>

#include <string>
#include <vector>

namespace norvane {

class ManagedObjectContext;
struct NVMCDEnvelopeTemplate;

/// The stored templates of that id, whatever the case of its letters.
FetchRequest requestForTemplateId(const std::string& templateId);
bool isTemplateStored(const std::string& templateId);
/// The files of a stored template, its combined document's too.
std::vector<std::string> allPdfPathsOf(const NVMCDEnvelopeTemplate& envelopeTemplate);
/// Removes the stored templates of that id, their files after the context's save.
void removeTemplates(const std::vector<std::shared_ptr<NVMCDEnvelopeTemplate>>& templates,
                     ManagedObjectContext& context);

} // namespace norvane
