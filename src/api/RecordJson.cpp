#include "src/api/DeserializationErrors.h"
#include "src/api/RecordReader.h"
#include "src/api/RecordWriter.h"

#include <norvane/api/RecordJson.h>

namespace norvane {

Result<std::shared_ptr<void>> readRecord(const RecordType& type, std::string_view json) {
    JsonCursor cursor(json);
    const auto root = cursor.root();
    if (!root) return typeMismatch(json, type.name());
    return RecordReader(cursor).read(*root, type);
}

std::string writeRecord(const RecordType& type, const void* record) {
    std::string text;
    RecordWriter(text).writeRecord(type, record);
    return text;
}

} // namespace norvane
