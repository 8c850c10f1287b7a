#include "src/model/RecordConversion.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRecipients.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace norvane {
namespace {

void collect(const RecordType& type, std::vector<std::string_view>& names) {
    for (const Field& field : type.fields())
        if (field.kind == FieldKind::Bool) names.push_back(field.name);
}

/// The names of all Booleans of the domain records, and those of the store that no domain record has.
std::vector<std::string_view> booleanAttributes() {
    std::vector<std::string_view> names = {"allowRecipientRecursion",
                                           "disableResponsiveDocument",
                                           "useDisclosure",
                                           "syncPending",
                                           "hasIncompleteLocalSigners",
                                           "isCreatedFromTemplate",
                                           "isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession"};
    for (const RecordType* type :
         {&NVMEnvelopeTemplate::type(), &NVMEnvelopeTemplateDefinition::type(), &NVMDocument::type(),
          &NVMSigner::type(), &NVMInPersonSigner::type(), &NVMSignHere::type(), &NVMText::type(),
          &NVMCheckbox::type(), &NVMMergeField::type(), &NVMTextCustomField::type(), &NVMNotification::type(),
          &NVMReminders::type(), &NVMExpirations::type()})
        collect(*type, names);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

bool isBooleanAttribute(std::string_view name) {
    static const std::vector<std::string_view> names = booleanAttributes();
    return std::binary_search(names.begin(), names.end(), name);
}

} // namespace norvane
