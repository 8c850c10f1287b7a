#pragma once

#include <norvane/platform/Result.h>
#include <norvane/store/NVMManagedObject.h>

#include <memory>
#include <string>

// The bookkeeping of the caches. Members are the attributes and the relationships that lead to what a row
// owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

class ManagedObjectContext;

#define NVMCD_CACHE_META_DATA_FIELDS(FIELD, R) \
    FIELD(R, Text, uri) FIELD(R, Text, recordType) FIELD(R, Date, lastTimeCached)

/// Tells that a record is kept on this device: `uri` is its identifier, `recordType` its kind.
struct NVMCDCacheMetaData : NVMManagedObject {
    NVMCD_ENTITY(NVMCDCacheMetaData, NVMCD_CACHE_META_DATA_FIELDS)

    static FetchRequest cachePredicateForURI(const std::string& uri, const std::string& identifier);
    /// The first row of that record and kind, or null.
    static Result<std::shared_ptr<NVMCDCacheMetaData>>
    existingMetaDataForURI(const std::string& uri, const std::string& identifier,
                           const ManagedObjectContext& context);
    /// The existing row, or a new one, which the context inserts when it saves.
    static Result<std::shared_ptr<NVMCDCacheMetaData>>
    cacheMetaDataForURI(const std::string& uri, const std::string& identifier, ManagedObjectContext& context);
    Dictionary userInfo() const; ///< {"cacheURI": uri}
};

} // namespace norvane
