#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

namespace norvane {

struct NVMRadioGroup;

// clang-format off
#define NVM_RADIO_OWN_FIELDS(FIELD, R) \
    FIELD(R, Integer, xPosition) FIELD(R, Integer, yPosition) FIELD(R, Bool, selected)
#define NVM_RADIO_FIELDS(FIELD, R) NVM_TEXT_TAB_FIELDS(FIELD, R) NVM_RADIO_OWN_FIELDS(FIELD, R)
// clang-format on

/// One choice of a group.
struct NVMRadio : NVMTextTabProtocol {
    NORVANE_RECORD(NVMRadio, NVM_RADIO_OWN_FIELDS)
    /// The group that holds it; set by NVMRadioGroup::adoptRadios, no field of the table.
    std::weak_ptr<NVMRadioGroup> radioGroup;

    NVMRadio() { tabType = NVMTabTypeRadio; }
    NVMRadio(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMRadio(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;
};

} // namespace norvane
