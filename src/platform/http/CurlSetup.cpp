#include "src/platform/http/CurlSetup.h"

#include <norvane/platform/NVMException.h>

#include <curl/curl.h>

#include <cstdlib>
#include <mutex>

namespace norvane {

void setUpCurl() {
    static std::once_flag once;
    std::call_once(once, [] {
        ::unsetenv("SSLKEYLOGFILE");
        if (const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT); code != CURLE_OK)
            throw NVMException("HttpSessionException", curl_easy_strerror(code));
    });
}

} // namespace norvane
