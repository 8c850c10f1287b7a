#pragma once

#include <norvane/model/NVMImageTabProtocol.h>

namespace norvane {

#define NVM_SIGN_HERE_FIELDS(FIELD, R) NVM_IMAGE_TAB_FIELDS(FIELD, R)

/// Where the recipient signs.
struct NVMSignHere : NVMImageTabProtocol {
    static const RecordType& type();

    NVMSignHere() { tabType = NVMTabTypeSignHere; }
    NVMSignHere(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMSignHere(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
