#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (const int status = norvane::playRole(argc, argv); status >= 0) return status;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
