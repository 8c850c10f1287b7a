#pragma once

#include <norvane/api/NVESServiceApi.h>

#include <span>
#include <string_view>

namespace norvane {

/// One operation of the service. Its required parameters are the placeholders of its path, in their order.
struct NVESServiceApi::Operation {
    std::string_view name; ///< as programming errors call it
    std::string_view method;
    std::string_view path;
    std::string_view result = {};      ///< the response type; empty when nothing is decoded
    std::string_view contentType = {}; ///< of what is sent; JSON when empty
};

} // namespace norvane
