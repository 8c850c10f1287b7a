#pragma once

namespace norvane {

/// After it set-up counts as never tried.
void forgetSetUp();

} // namespace norvane
