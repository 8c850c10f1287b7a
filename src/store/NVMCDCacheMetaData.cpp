#include <norvane/store/NVMCDCacheMetaData.h>

namespace norvane {

NORVANE_TABLE(NVMCDCacheMetaData, NVMCD_CACHE_META_DATA_FIELDS)

} // namespace norvane
