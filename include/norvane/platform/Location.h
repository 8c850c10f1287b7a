#pragma once

#include <optional>

namespace norvane {

struct Coordinate {
    double latitude = 0;           ///< degrees, north positive
    double longitude = 0;          ///< degrees, east positive
    double horizontalAccuracy = 0; ///< metres; negative: not valid
};

class LocationService {
  public:
    virtual ~LocationService() = default;
    /// The last known place; nothing when unknown or not permitted. Never blocks.
    virtual std::optional<Coordinate> location() = 0;
};

} // namespace norvane
