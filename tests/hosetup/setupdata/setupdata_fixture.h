// Shared set-up of the setup-description tests: the common fixture with the product's registry
// key and folder word.
#pragma once

#include "setup_fixture.h"
#include "setupdata/setupdata.h"

class SetupStateTest : public SetupFixture {
protected:
    void SetUp() override
    {
        SetupFixture::SetUp();
        HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, "Software\\Harwick-Orbel\\Vistrel Professional");
        HOI_CopyA(g_setup.productFolderWord, kPathCapacity, "Harwick-Orbel\\Vistrel (64-bit)\\");
    }
};
