#include "src/model/IndependentCopy.h"

#include <norvane/model/NVMRadioGroup.h>

namespace norvane {
namespace {

void adoptRadios(const NVMRadioGroup&, NVMRadioGroup& copy) { copy.adoptRadios(); }

constexpr ConversionRule kRules[] = {
    {&NVMRadioGroup::type, &NVMRadioGroup::type, {}, {}, &Then<adoptRadios>::apply},
};

} // namespace

const RecordConversion& independentCopy() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

} // namespace norvane
