// The entry of every test program.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "support/child.h"

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], "--child") == 0) {
        const ChildEntry::Main child = ChildEntry::find(argv[2]);
        if (!child) {
            std::fprintf(stderr, "no child main \"%s\"\n", argv[2]);
            return 98;
        }
        argv[2] = argv[0];
        return child(argc - 2, argv + 2);
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
