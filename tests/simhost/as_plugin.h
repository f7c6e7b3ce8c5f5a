// A fixture: a simulator that has just started, and the test program acting as a plug-in in it.
#pragma once

#include <gtest/gtest.h>

#include "simhost/simulator.h"

class AsPlugin : public ::testing::Test {
protected:
    AsPlugin() {
        simhost::ResetSimulator();
        simhost::ActAsPlugin("/nowhere/plugins/test/64/lin.xpl");
    }
};
