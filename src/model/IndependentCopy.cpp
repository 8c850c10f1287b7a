#include "src/model/IndependentCopy.h"

#include <norvane/model/NVMRadioGroup.h>

namespace norvane {
namespace {

void adoptRadios(const NVMRadioGroup&, NVMRadioGroup& copy) { copy.adoptRadios(); }

/// A copied text stays the same object.
void shareTabId(const NVMRadio& radio, NVMRadio& copy) { copy.tabIdIdentity = radio.tabIdIdentity; }

constexpr ConversionRule kRules[] = {
    {&NVMRadio::type, &NVMRadio::type, {}, {}, &Then<shareTabId>::apply},
    {&NVMRadioGroup::type, &NVMRadioGroup::type, {}, {}, &Then<adoptRadios>::apply},
};

} // namespace

const RecordConversion& independentCopy() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

} // namespace norvane
