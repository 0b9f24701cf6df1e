// Shared set-up of the setup-description tests: a cleared, silent setup state with the product's
// registry key and folder word, released after each test, and a scratch folder of its own.
#pragma once

#include "process.h"
#include "setupdata/setupdata.h"
#include "shell/shell.h"
#include "strings/hoi_strings.h"

#include <gtest/gtest.h>

class SetupStateTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        clearSetupState();
        HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, "Software\\Harwick-Orbel\\Vistrel Professional");
        HOI_CopyA(g_setup.productFolderWord, kPathCapacity, "Harwick-Orbel\\Vistrel (64-bit)\\");
        g_setup.optionSilent = 1;
        scratch_ = makeTempFolder("setupdata");
    }
    void TearDown() override { exitSetup(); removeTree(scratch_); }

    std::string scratch_;
};
