#pragma once

#include <norvane/model/NVMTextTabProtocol.h>

#include <cstdint>
#include <memory>

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
    /// Tells this radio's id from an equal one: copies of the radio share it, a radio that is made or read
    /// gets one of its own.
    std::uint64_t tabIdIdentity = newTabIdIdentity();
    /// The group that holds it; set by NVMRadioGroup::adoptRadios, no field of the table.
    std::weak_ptr<NVMRadioGroup> radioGroup;

    NVMRadio() { tabType = NVMTabTypeRadio; }
    NVMRadio(const NVMDocument& document, std::int64_t onPage, const NVMRecipient& signer);
    explicit NVMRadio(const NVMCDTab& stored);
    const RecordType& recordType() const override { return type(); }
    bool lacksValue() override;

  private:
    static std::uint64_t newTabIdIdentity();
};

} // namespace norvane
