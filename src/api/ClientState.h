#pragma once

namespace norvane::ClientState {

/// Sets the bounds of the present session's response cache, once for each session.
void prepareSession();

/// What every client's reachability monitor calls.
void reachabilityChanged(int status);

} // namespace norvane::ClientState
