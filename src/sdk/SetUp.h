#pragma once

#include <mutex>

namespace norvane {

/// While held, no set-up or sign-out runs elsewhere.
std::unique_lock<std::mutex> holdSetUp();
/// After it set-up counts as never tried.
void forgetSetUp();

} // namespace norvane
