#pragma once

#include "sandbox/Fault.h"
#include "sandbox/HttpMessage.h"

namespace norvane::sandbox {

/// What a fault of the kinds Status and Portal answers instead of the operation.
Answer answerOf(const Fault& fault);

} // namespace norvane::sandbox
