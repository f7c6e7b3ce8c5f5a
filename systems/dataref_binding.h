// What binds a parameter to a dataref: one that the plug-in publishes, or one of the simulator, the aircraft
// or another plug-in that may come into existence later.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "XPLMDataAccess.h"
#include "frame/datarefs.h"
#include "util/numbers.h"

enum { BindingNone = 0, BindingNew = 1, BindingExist = 2 };

// A dataref as systems files and imported lists name it: "name" or "name[index]".
struct DatarefName {
    std::string name; // without index
    bool hasIndex = false;
    bool isClosed = true;          // no "[" without "]" at the end
    std::optional<int> index = {}; // the number in the brackets; none: it is no number

    explicit DatarefName(std::string_view fullName);

    // An index that is given is one that systems files reach, 0 to 15.
    bool isReachable() const;
};

// A dataref as a frame reads and writes it: by its handle, as the type that it has.
struct DatarefAccess {
    XPLMDataRef handle = nullptr; // null: there is no such dataref
    int type = 1;                 // the simulator's type bits
    int index = -1;               // array element
    DRFclass *own = nullptr;      // one that the plug-in publishes as that type: read where it lies

    // 0 for an array without that element.
    double Get() const {
        if (type == xplmType_Float) return own ? own->floatValue : XPLMGetDataf(handle);
        if (type == xplmType_Int) return own ? own->intValue : XPLMGetDatai(handle);
        return type == xplmType_Double ? XPLMGetDatad(handle) : GetOther();
    }
    // The value converted to the dataref's type.
    void Set(double value) const {
        if (type == xplmType_Float)
            own ? void(own->floatValue = static_cast<float>(value))
                : XPLMSetDataf(handle, static_cast<float>(value));
        else if (type == xplmType_Int)
            own ? void(own->intValue = TruncateToInt(value)) : XPLMSetDatai(handle, TruncateToInt(value));
        else
            SetOther(value);
    }

private:
    double GetOther() const;
    void SetOther(double value) const;
};

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

    // Without a handle while there is no such dataref; one of mode "exist" is looked up again. An index that
    // cannot be reached is reported once.
    DatarefAccess Access();

    void Unregister();

private:
    bool wasIndexReported = false;

    bool Find();
    void ReportIndex();
};
