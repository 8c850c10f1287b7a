#include <norvane/store/NVMCDEnvelopes.h>

namespace norvane {

NORVANE_TABLE(NVMCDTemplateRole, NVMCD_TEMPLATE_ROLE_FIELDS)
NORVANE_TABLE(NVMCDEnvelopeDefinition, NVMCD_ENVELOPE_DEFINITION_FIELDS)

} // namespace norvane
