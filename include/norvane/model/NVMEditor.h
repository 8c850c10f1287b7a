#pragma once

#include <norvane/model/NVMNamedRecipient.h>

namespace norvane {

struct NVESEditor;

#define NVM_EDITOR_FIELDS(FIELD, R) NVM_NAMED_RECIPIENT_ALL_FIELDS(FIELD, R)

/// One who may change the envelope on its way.
struct NVMEditor : NVMNamedRecipient {
    static const RecordType& type();

    NVMEditor() { recipientType = NVMRecipientTypeEditor; }
    explicit NVMEditor(const NVMCDRecipient& stored);
    explicit NVMEditor(const NVESEditor& wire);
    const RecordType& recordType() const override { return type(); }
};

} // namespace norvane
