#pragma once

#include <norvane/model/NVMImageTabProtocol.h>

namespace norvane {

#define NVM_INITIAL_HERE_FIELDS(FIELD, R) NVM_IMAGE_TAB_FIELDS(FIELD, R)

/// Where the recipient puts initials.
struct NVMInitialHere : NVMImageTabProtocol {
    static const RecordType& type();

    NVMInitialHere() { tabType = NVMTabTypeInitialHere; }
    NVMInitialHere(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMInitialHere(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
