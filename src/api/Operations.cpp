#include "src/api/OperationNames.h"
#include "src/api/OperationTable.h"

namespace norvane {

std::string queryName(std::string_view option) {
    std::string result;
    for (const char c : option) {
        if (c >= 'A' && c <= 'Z')
            result.append({'_', static_cast<char>(c - 'A' + 'a')});
        else
            result += c;
    }
    return result;
}

const Field* optionNamed(const RecordType& options, std::string_view name) {
    for (const Field& field : options.fields())
        if (field.name == name || queryName(field.name) == name) return &field;
    return nullptr;
}

std::vector<std::string_view> NVESOperation::requiredParameters() const {
    std::vector<std::string_view> names;
    for (std::size_t open = path.find('{'); open != std::string_view::npos; open = path.find('{', open)) {
        const std::size_t close = path.find('}', open);
        // ".{format}" is no parameter: its place is filled by ".json".
        if (open == 0 || path[open - 1] != '.') names.push_back(path.substr(open + 1, close - open - 1));
        open = close;
    }
    return names;
}

std::vector<std::string> NVESOperation::queryParameters() const {
    std::vector<std::string> names;
    if (options)
        for (const Field& field : options().fields())
            names.push_back(queryName(field.name));
    return names;
}

std::span<const NVESOperation> serviceOperations() { return kOperations; }

std::vector<const NVESOperation*> serviceOperationsNamed(std::string_view name) {
    const std::size_t dot = name.find('.');
    const std::string_view service = dot == std::string_view::npos ? "" : name.substr(0, dot);
    const std::string_view bare = dot == std::string_view::npos ? name : name.substr(dot + 1);
    std::vector<const NVESOperation*> found;
    for (const NVESOperation& operation : kOperations) {
        if (service.empty() && !bare.empty() && operation.facade == bare) return {&operation};
        if (operation.name != bare || (!service.empty() && operation.service != service)) continue;
        found.push_back(&operation);
    }
    for (const NVESOperation* operation : found)
        if (!operation->facade.empty()) return {operation};
    return found;
}

} // namespace norvane
