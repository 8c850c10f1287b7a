#pragma once

#include "src/pdf/State.h"

#include <norvane/platform/Result.h>

#include <memory>

namespace norvane {

/// Copies all pages of `source`, with annotations and form fields, so that `position` pages of `target` stay
/// ahead of them. Takes the locks of both; `target` does not change on error.
Failure insertPages(PdfDocument::State& target, const std::shared_ptr<PdfDocument::State>& source,
                    std::size_t position);

} // namespace norvane
