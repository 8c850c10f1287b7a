#include "sandbox/FaultPlan.h"

#include <utility>

namespace norvane::sandbox {

void FaultPlan::add(Fault fault) {
    const std::lock_guard lock(mutex_);
    faults_.push_back(std::move(fault));
}

void FaultPlan::clear() {
    const std::lock_guard lock(mutex_);
    faults_.clear();
}

std::vector<Fault> FaultPlan::remaining() const {
    const std::lock_guard lock(mutex_);
    return faults_;
}

std::optional<Fault> FaultPlan::take(std::string_view method, std::string_view path) {
    const std::lock_guard lock(mutex_);
    for (auto fault = faults_.begin(); fault != faults_.end(); ++fault) {
        if (!fault->matches(method, path)) continue;
        if (fault->skip > 0) {
            --fault->skip;
            continue;
        }
        Fault hit = *fault;
        if (fault->times > 0 && --fault->times == 0) faults_.erase(fault);
        return hit;
    }
    return std::nullopt;
}

} // namespace norvane::sandbox
