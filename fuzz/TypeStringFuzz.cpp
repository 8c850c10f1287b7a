#include <norvane/api/NVESErrors.h>
#include <norvane/api/NVESResponseDeserializer.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// The first line is the type, the rest the answer. Only the three errors may come out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\n');
    if (end == std::string_view::npos) return 0;
    norvane::NVESResponseDeserializer deserializer;
    deserializer.treatNullAsError = size % 2 == 1;
    const auto result = deserializer.deserialize(input.substr(end + 1), input.substr(0, end));
    if (!result && result.error().domain != norvane::kDeserializationErrorDomain) std::abort();
    return 0;
}
