#pragma once

#include <norvane/model/NVMRadio.h>
#include <norvane/record/Record.h>

#include <memory>

namespace norvane {

struct NVMCDRadioGroup;

// clang-format off
#define NVM_RADIO_GROUP_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, recipientId) FIELD(R, Text, conditionalParentLabel) \
    FIELD(R, Text, conditionalParentValue) FIELD(R, Text, groupName) FIELD(R, List<NVMRadio>, radios) \
    FIELD(R, Bool, shared) FIELD(R, Bool, requireInitialOnSharedChange) FIELD(R, Bool, requireAll)
// clang-format on

/// A named group of radio tabs, of which at most one is selected. It is no tab itself.
struct NVMRadioGroup : std::enable_shared_from_this<NVMRadioGroup> {
    NORVANE_RECORD(NVMRadioGroup, NVM_RADIO_GROUP_FIELDS)

    NVMRadioGroup() = default;
    /// The radios refer to the group only once a shared_ptr owns it: call `adoptRadios` then.
    explicit NVMRadioGroup(const NVMCDRadioGroup& stored);

    /// Makes every radio refer to this group, which a shared_ptr must own.
    void adoptRadios();
};

} // namespace norvane
