#include "src/platform/Adapters.h"

namespace norvane {

namespace {

class UnknownLocation final : public LocationService {
  public:
    std::optional<Coordinate> location() override { return std::nullopt; }
};

} // namespace

std::shared_ptr<LocationService> makeUnknownLocation() { return std::make_shared<UnknownLocation>(); }

} // namespace norvane
