// Only what start-up needs to know so far: whether the aircraft is set up.
#include "figure/installation.h"

#include "util/files.h"
#include "util/log.h"
#include "util/paths.h"
#include "util/text.h"

int isSetupCompleted_767() {
    for (const std::string &line : ReadFileToVector(WhatThisAircraftAcfPath()))
        if (Contains(line, "kvfennic.obj")) return 1;
    return 0;
}

void OpenSetupPrompt() {
    string2debugString(
        "Setup needed: ", "set installation=2 in data/settings_mac.txt and reload the aircraft", 1);
}
