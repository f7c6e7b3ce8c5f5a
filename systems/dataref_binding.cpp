// Typed access to a bound dataref. Arrays are always transferred as their first 16 elements.
#include "systems/dataref_binding.h"

#include "frame/datarefs.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/numbers.h"

namespace {

const int FloatAndDouble = xplmType_Float | xplmType_Double;
const int AnyScalar = FloatAndDouble | xplmType_Int;

} // namespace

void dataref_class::Init(const std::string &fullNameText, const std::string &modeText, int type,
                         double initValue) {
    fullName = fullNameText;
    const size_t bracket = fullName.find('[');
    name = fullName.substr(0, bracket);
    if (bracket != std::string::npos) {
        const size_t close = fullName.find(']', bracket);
        const std::string digits = fullName.substr(bracket + 1, close - bracket - 1);
        if (!ParseInt(digits, index) || !isReachableElement(index)) ReportIndex();
    }
    if (modeText == "new") {
        dataType = type;
        if (type == xplmType_Float) handle = CreateDrf_Float(name, static_cast<float>(initValue));
        if (type == xplmType_Int) handle = CreateDrf_Int(name, TruncateToInt(initValue));
        mode = BindingNew;
    } else if (modeText == "exist") {
        mode = BindingExist;
        handle = FindDataref(name.c_str());
        dataType = XPLMGetDataRefTypes(handle);
        if (dataType == FloatAndDouble || dataType == AnyScalar) dataType = xplmType_Double;
    }
}

// A late dataref that offers all three scalar types keeps them as its type, and is read as a double.
bool dataref_class::Find() {
    if (handle) return true;
    if (mode != BindingExist) return false;
    handle = FindDataref(name.c_str());
    if (!handle) return false;
    dataType = XPLMGetDataRefTypes(handle);
    if (dataType == FloatAndDouble) dataType = xplmType_Double;
    return true;
}

bool dataref_class::isElement() {
    if (isReachableElement(index)) return true;
    if (!wasIndexReported) ReportIndex();
    return false;
}

void dataref_class::ReportIndex() {
    LogProblem("Error in systems file - array index outside 0 to 15: ", fullName);
    wasIndexReported = true;
}

double dataref_class::GetValue() {
    lastValue = 0.0;
    if (!Find()) return lastValue;
    switch (dataType) {
    case xplmType_Int: lastValue = XPLMGetDatai(handle); break;
    case xplmType_Float: lastValue = XPLMGetDataf(handle); break;
    case xplmType_FloatArray:
        if (isElement()) lastValue = GetElementf(handle, index);
        break;
    case xplmType_IntArray:
        if (isElement()) lastValue = GetElementi(handle, index);
        break;
    default: lastValue = XPLMGetDatad(handle); break;
    }
    return lastValue;
}

void dataref_class::SetValue(double value) {
    lastValue = 0.0;
    if (!Find()) return;
    lastValue = value;
    switch (dataType) {
    case xplmType_Int: XPLMSetDatai(handle, TruncateToInt(value)); break;
    case xplmType_Float: XPLMSetDataf(handle, static_cast<float>(value)); break;
    case xplmType_FloatArray:
        if (isElement()) SetElementf(handle, index, static_cast<float>(value));
        break;
    case xplmType_IntArray:
        if (isElement()) SetElementi(handle, index, TruncateToInt(value));
        break;
    default: XPLMSetDatad(handle, value); break;
    }
}

// Handles of others are passed too: the simulator ignores an unregistration by somebody else.
void dataref_class::Unregister() {
    if (handle) XPLMUnregisterDataAccessor(handle);
    handle = nullptr;
}
