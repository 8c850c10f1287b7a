#pragma once

#include "sandbox/Fault.h"

#include <mutex>
#include <optional>
#include <vector>

namespace norvane::sandbox {

/// The faults still to come. Any thread may call.
class FaultPlan {
  public:
    void add(Fault fault);
    void clear();
    /// What is left, with `skip` and `times` counted down.
    std::vector<Fault> remaining() const;
    /// The fault that hits this request, counted as used; faults are tried in the order in which they came,
    /// and one that still skips lets the next one try.
    std::optional<Fault> take(std::string_view method, std::string_view path);

  private:
    mutable std::mutex mutex_;
    std::vector<Fault> faults_; ///< guarded by mutex_
};

} // namespace norvane::sandbox
