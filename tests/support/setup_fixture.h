// The fixture of the tests that call the program's steps directly: a cleared, silent setup state
// at scale 1 whose windows take their templates from the language module (silent runs still show
// the progress window), with the product's registry key and folder word as the program sets them
// at its start, a temporary folder of the test's own, and the state released afterwards.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "core/core.h"
#include "process.h"
#include "setupdata/setupdata.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

inline void writeFile(const std::string& to, const std::string& text) { std::ofstream(to, std::ios::binary) << text; }

class SetupFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        root_ = makeTempFolder("setup");
        clearSetupState();
        g_setup.optionSilent = 1;
        g_setup.languageModule = GetModuleHandleA("holang.dll");
        g_setup.scale = 1.0;
        HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, "Software\\Harwick-Orbel\\Vistrel Professional");
        HOI_CopyA(g_setup.productFolderWord, kPathCapacity, "Harwick-Orbel\\Vistrel (64-bit)\\");
    }
    void TearDown() override { exitSetup(); removeTree(root_); }   // exitSetup: log, windows and records

    std::string root_;
};
