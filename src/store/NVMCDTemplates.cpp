#include <norvane/store/NVMCDTemplates.h>

namespace norvane {

NORVANE_TABLE(NVMCDEnvelopeTemplateDefinition, NVMCD_ENVELOPE_TEMPLATE_DEFINITION_FIELDS)
NORVANE_TABLE(NVMCDEnvelopeTemplate, NVMCD_ENVELOPE_TEMPLATE_FIELDS)

} // namespace norvane
