#include <norvane/api/NVESAccounts.h>
#include <norvane/sdk/NVMErrorDetails.h>

namespace norvane {

NORVANE_TABLE(NVMErrorDetails, NVM_ERROR_DETAILS_FIELDS)

NVMErrorDetails::NVMErrorDetails(const NVESErrorDetails& errorDetails)
    : errorCode(errorDetails.errorCode)
    , message(errorDetails.message) {}

} // namespace norvane
