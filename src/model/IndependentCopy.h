#pragma once

#include "src/model/RecordConversion.h"

namespace norvane {

/// The conversion of domain records into records of their own kind: nothing is shared but immutable bytes.
const RecordConversion& independentCopy();

} // namespace norvane
