#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDCacheMetaData.h>

namespace norvane {

NORVANE_TABLE(NVMCDCacheMetaData, NVMCD_CACHE_META_DATA_FIELDS)

FetchRequest NVMCDCacheMetaData::cachePredicateForURI(const std::string& uri, const std::string& identifier) {
    return fetchRequest()
        .where("uri", FetchRequest::Match::Equal, uri)
        .where("recordType", FetchRequest::Match::Equal, identifier);
}

Result<std::shared_ptr<NVMCDCacheMetaData>>
NVMCDCacheMetaData::existingMetaDataForURI(const std::string& uri, const std::string& identifier,
                                           const ManagedObjectContext& context) {
    return context.fetchFirst<NVMCDCacheMetaData>(cachePredicateForURI(uri, identifier));
}

Result<std::shared_ptr<NVMCDCacheMetaData>>
NVMCDCacheMetaData::cacheMetaDataForURI(const std::string& uri, const std::string& identifier,
                                        ManagedObjectContext& context) {
    auto existing = existingMetaDataForURI(uri, identifier, context);
    if (!existing || *existing) return existing;
    auto row = std::make_shared<NVMCDCacheMetaData>();
    row->uri = uri;
    row->recordType = identifier;
    context.insert(row);
    return row;
}

Dictionary NVMCDCacheMetaData::userInfo() const { return {{"cacheURI", uri.value_or("")}}; }

} // namespace norvane
