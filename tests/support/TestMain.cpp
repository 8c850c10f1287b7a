#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

/// The thread sanitizer cannot see how GLib, which is not built for it, keeps its threads apart.
extern "C" const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libglib-2.0.so\ncalled_from_lib:libgio-2.0.so\ncalled_from_lib:libgobject-2.0."
           "so\n"
           "race:libglib-2.0.so\nrace:libgio-2.0.so\nrace:libgobject-2.0.so\nrace:libsecret-1.so\ncalled_"
           "from_lib:libsecret-1.so\nmutex:libsecret-1.so\n";
}

int main(int argc, char** argv) {
    if (const int status = norvane::playRole(argc, argv); status >= 0) return status;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

/// Fontconfig keeps the fonts that it found until the process ends, out of the leak checker's sight.
extern "C" const char* __lsan_default_suppressions(); // NOLINT: the checker's own name
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; } // NOLINT
