#include <norvane/api/NVESAccounts.h>
#include <norvane/sdk/NVMUserInfo.h>

namespace norvane {

NORVANE_TABLE(NVMUserInfo, NVM_USER_INFO_FIELDS)

NVMUserInfo::NVMUserInfo(const NVESUserInfo& userInfo) {
    copyLikeNamedFields(NVESUserInfo::type(), &userInfo, type(), this);
}

} // namespace norvane
