// Typed access to a bound dataref. Arrays are always transferred as their first 16 elements.
#include "systems/dataref_binding.h"

#include "util/find_dataref.h"
#include "util/log.h"

namespace {

const int FloatAndDouble = xplmType_Float | xplmType_Double;
const int AnyScalar = FloatAndDouble | xplmType_Int;

} // namespace

DatarefName::DatarefName(std::string_view fullName) {
    const size_t bracket = fullName.find('[');
    name = fullName.substr(0, bracket);
    if (bracket == std::string_view::npos) return;
    hasIndex = true;
    isClosed = fullName.ends_with(']');
    const std::string_view behind = fullName.substr(bracket + 1);
    if (int number = 0; ParseInt(behind.substr(0, behind.find(']')), number)) index = number;
}

bool DatarefName::isReachable() const {
    return !hasIndex || (index && isReachableElement(*index));
}

void dataref_class::Init(const std::string &fullNameText, const std::string &modeText, int type,
                         double initValue) {
    fullName = fullNameText;
    const DatarefName parts(fullName);
    name = parts.name;
    index = parts.index.value_or(index);
    if (!parts.isReachable()) ReportIndex();
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

void dataref_class::ReportIndex() {
    LogProblem("Error in systems file - array index outside 0 to 15: ", fullName);
    wasIndexReported = true;
}

DatarefAccess dataref_class::Access() {
    if (!Find()) return {};
    const bool isArray = dataType == xplmType_FloatArray || dataType == xplmType_IntArray;
    if (isArray && !isReachableElement(index) && !wasIndexReported) ReportIndex();
    DatarefAccess access;
    access.handle = handle;
    access.type = dataType;
    access.index = index;
    const bool isSameType = XPLMGetDataRefTypes(handle) == dataType; // else it gives 0, as any other
    access.own = isSameType ? OwnDataref(handle) : nullptr;
    return access;
}

double DatarefAccess::GetOther() const {
    switch (type) {
    case xplmType_FloatArray: return GetElementf(handle, index);
    case xplmType_IntArray: return GetElementi(handle, index);
    default: return XPLMGetDatad(handle);
    }
}

void DatarefAccess::SetOther(double value) const {
    switch (type) {
    case xplmType_FloatArray: SetElementf(handle, index, static_cast<float>(value)); break;
    case xplmType_IntArray: SetElementi(handle, index, TruncateToInt(value)); break;
    default: XPLMSetDatad(handle, value); break;
    }
}

// Handles of others are passed too: the simulator ignores an unregistration by somebody else.
void dataref_class::Unregister() {
    if (DRFclass *own = OwnDataref(handle))
        own->Unregister();
    else if (handle)
        XPLMUnregisterDataAccessor(handle);
    handle = nullptr;
}
