#pragma once

#include <norvane/model/NVMTab.h>
#include <norvane/model/NVMTabImageData.h>

namespace norvane {

// clang-format off
#define NVM_IMAGE_TAB_OWN_FIELDS(FIELD, R) \
    FIELD(R, Record<NVMTabImageData>, imageData) FIELD(R, Number, scaleValue) FIELD(R, Bool, optional)
#define NVM_IMAGE_TAB_FIELDS(FIELD, R) NVM_TAB_FIELDS(FIELD, R) NVM_IMAGE_TAB_OWN_FIELDS(FIELD, R)
// clang-format on

/// A tab that is filled with an image: sign here, initial here. `imageData` is absent until it is signed,
/// `scaleValue` scales the frame.
struct NVMImageTabProtocol : NVMTab {
    NORVANE_RECORD(NVMImageTabProtocol, NVM_IMAGE_TAB_OWN_FIELDS)

    using NVMTab::NVMTab;
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;

  protected:
    bool isKindRequired() const override { return !optional; }
};

} // namespace norvane
