#include <norvane/api/NVESPassedThrough.h>

namespace norvane {

#define NVES_PASSED_THROUGH_TABLE(R) NORVANE_TABLE(R, NVES_PASSED_THROUGH_FIELDS)
NVES_PASSED_THROUGH_RECORDS(NVES_PASSED_THROUGH_TABLE)

} // namespace norvane
