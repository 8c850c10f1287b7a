#pragma once

namespace norvane {

/// Readies libcurl for this process; only the first call does anything. It takes SSLKEYLOGFILE out of the
/// environment, because libcurl would write the keys of every connection there.
void setUpCurl();

} // namespace norvane
