#pragma once

#include "src/model/RecordConversion.h"

namespace norvane {

/// Reads stored records into domain records. Documents come without their bytes.
const RecordConversion& storeToDomain();

} // namespace norvane
