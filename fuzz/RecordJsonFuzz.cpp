#include <norvane/api/NVESErrors.h>
#include <norvane/api/RecordJson.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using norvane::RecordType;

/// Whatever comes in: a record or the one error, and what was read is written so that it reads the same
/// again.
void checkRoundTrip(const RecordType& type, std::string_view json) {
    const auto record = norvane::readRecord(type, json);
    if (!record) {
        if (record.error().code != static_cast<std::int64_t>(norvane::DeserializationError::TypeMismatch))
            std::abort();
        return;
    }
    const std::string written = norvane::writeRecord(type, record->get());
    const auto again = norvane::readRecord(type, written);
    if (!again || norvane::writeRecord(type, again->get()) != written) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view json(reinterpret_cast<const char*>(data), size);
    // The families: templates, definitions, envelopes, recipients, tabs, accounts, what passes through, lists
    // of plain texts.
    static const char* const names[] = {"NVESEnvelopeTemplate",
                                        "NVESEnvelopeDefinition",
                                        "NVESEnvelopesInformation",
                                        "NVESEnvelopeTemplateResults",
                                        "NVESRecipients",
                                        "NVESTabs",
                                        "NVESLoginInformation",
                                        "NVESAccountInformation",
                                        "NVESFolderItemsResponse",
                                        "NVESListCustomField",
                                        "NVESText",
                                        "NVESRecipientsUpdateSummary"};
    for (const char* const name : names)
        checkRoundTrip(*norvane::wireRecordType(name), json);
    return 0;
}
