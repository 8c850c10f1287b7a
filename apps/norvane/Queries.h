#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Result.h>
#include <norvane/platform/Value.h>

#include <span>
#include <string>
#include <string_view>

namespace norvane::cli {

enum class QueryArgument { None, Required, Optional };

/// A question that the records answer; one row a question.
struct Query {
    std::string_view name;
    QueryArgument takes;
    std::string_view argument; ///< what it is called in the help
    Result<Value> (*answer)(NVMEnvelopeDefinition& envelope, const std::string& argument);
};

std::span<const Query> queries();

} // namespace norvane::cli
