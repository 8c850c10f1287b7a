#include "src/platform/Adapters.h"

namespace norvane {

namespace {

class SystemClock final : public Clock {
  public:
    Date now() const override {
        return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    }
};

} // namespace

std::shared_ptr<Clock> makeSystemClock() { return std::make_shared<SystemClock>(); }

} // namespace norvane
