// What binds a parameter to a dataref: one that the plug-in publishes, or one of the simulator, the aircraft
// or another plug-in that may come into existence later.
#pragma once

#include <string>

#include "XPLMDataAccess.h"

enum { BindingNone = 0, BindingNew = 1, BindingExist = 2 };

class dataref_class {
public:
    std::string name;     // without index
    std::string fullName; // as written
    int index = -1;       // array element, 0 to 15
    int mode = BindingNone;
    XPLMDataRef handle = nullptr;
    int dataType = 1; // the simulator's type bits
    double lastValue = 0.0;

    // fullName is a dataref, optionally with "[index]"; modeText "new", "exist" or empty; type 1 (int) or
    // 2 (float) and initValue serve "new".
    void Init(const std::string &fullNameText, const std::string &modeText, int type, double initValue);

    // 0 while there is no such dataref; one of mode "exist" is looked up again.
    double GetValue();

    // Writes the value converted to the dataref's type; nothing while there is no such dataref.
    void SetValue(double value);

    void Unregister();

private:
    bool wasIndexReported = false;

    bool Find();
    bool isElement();
    void ReportIndex();
};
