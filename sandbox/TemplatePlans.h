#pragma once

#include "sandbox/Template.h"

namespace norvane::sandbox {

// One source file a plan.
TemplatePlan leasePlan();
TemplatePlan consentPlan();
TemplatePlan supplyPlan();
TemplatePlan rentalPlan();

} // namespace norvane::sandbox
