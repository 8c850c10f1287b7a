#include <norvane/store/NVMCDDocuments.h>

namespace norvane {

NORVANE_TABLE(NVMCDNameValue, NVMCD_NAME_VALUE_FIELDS)
NORVANE_TABLE(NVMCDDocument, NVMCD_DOCUMENT_FIELDS)

} // namespace norvane
