#pragma once

#include <norvane/store/NVMManagedObject.h>

// The bookkeeping of the caches. Members are the attributes and the relationships that lead to what a row owns;
// a number that stands for a Boolean is 1 or 0.
// clang-format off: a field list is a table.
namespace norvane {

#define NVMCD_CACHE_META_DATA_FIELDS(FIELD, R) \
    FIELD(R, Text, uri) FIELD(R, Text, recordType) FIELD(R, Date, lastTimeCached)

/// Tells that a record is kept on this device: `uri` is its identifier, `recordType` its kind.
struct NVMCDCacheMetaData : NVMManagedObject {
    NORVANE_RECORD(NVMCDCacheMetaData, NVMCD_CACHE_META_DATA_FIELDS)
};

} // namespace norvane
