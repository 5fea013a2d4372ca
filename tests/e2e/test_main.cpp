#include "e2e/file_manager.h"
#include "e2e/window_thread.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (veldara::test::FileManager::isWanted(argc, argv)) {
        return veldara::test::FileManager::run(argc, argv);
    }
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS(); // needs no display
    }
    return veldara::test::runBesideWindows(argc, argv, [] { return RUN_ALL_TESTS(); });
}
