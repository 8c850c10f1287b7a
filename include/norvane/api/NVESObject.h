#pragma once

#include <norvane/record/Record.h>

namespace norvane {

/// Base of the wire records: the JSON bodies that travel to and from the service. A record is data only.
/// Every key may be absent; scalars travel as JSON strings but for the fields of kind Number. A key is the
/// field's name, with two exceptions: see `jsonKey`.
struct NVESObject {};

/// The JSON key of a property: its name, but "description" for `_description` and "newPassword" for
/// `varNewPassword`.
constexpr std::string_view jsonKey(std::string_view property) {
    if (property == "_description") return "description";
    if (property == "varNewPassword") return "newPassword";
    return property;
}

// A record that the kit only hands through keeps all its members as they came.
#define NVES_PASSED_THROUGH_FIELDS(FIELD, R) FIELD(R, Rest, members)

} // namespace norvane
