// The main of every test program of tests/hosetup. The program's code reads the language
// module's texts through tables it binds at run time (core/language_tables.cpp), so they are
// bound here once, from the English module beside the test programs, before any test runs.
#include <gtest/gtest.h>

#include "core/core.h"
#include "process.h"

#include <cstdio>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const std::string module = testBinFolder() + "holang.dll";
    HMODULE language = LoadLibraryA(module.c_str());
    if (!language || !bindLanguageTables(language)) {
        std::fprintf(stderr, "%s cannot be loaded or lacks a text table\n", module.c_str());
        return 1;
    }
    return RUN_ALL_TESTS();
}
