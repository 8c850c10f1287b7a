#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <memory>
#include <string>
#include <string_view>

// Domain envelopes as JSON, for tools that look at them, keep them or bring them in; this is not the form in
// which the service talks. Names are those of the records' fields: "recipients" with its seven lists, each
// signer's "tabs" with its ten ("radioGroupTabs" of {"groupName", "radios": [...]}), "documents" and so on.
// Numbers and Booleans are JSON's, dates "YYYY-MM-DDThh:mm:ss.sssZ", bytes base64. Any thread may call.
//
// Reading: null and absent are the same. A member that no record has, or of the wrong kind, is an error of
// `kRecordErrorDomain` that names it with its path; text that is no JSON one of `kJsonErrorDomain`. The list
// gives the kind of a recipient or tab, whatever the record says of it; only "tabType": 0, a tab that the kit
// does not support, is kept. Radios know their groups afterwards.
//
// Writing: absent fields are left out, Booleans and whole numbers always written, keys in bytewise order.
// What is a set (custom fields, document fields, blind copies) is sorted by name.
namespace norvane {

Result<std::shared_ptr<NVMEnvelopeDefinition>> envelopeFromJson(std::string_view json);
/// The same from a document that is read already, or a part of one.
Result<std::shared_ptr<NVMEnvelopeDefinition>> envelopeFromValues(const Dictionary& values);

/// Without line breaks.
std::string jsonFromEnvelope(const NVMEnvelopeTemplate& envelope);
/// The same as a document that can be written or looked into: dates and bytes are values of their own types,
/// which `writeJson` writes as said.
Dictionary valuesFromEnvelope(const NVMEnvelopeTemplate& envelope);

/// Any domain record in that form.
Dictionary valuesFromDomainRecord(const RecordType& type, const void* record);

} // namespace norvane
