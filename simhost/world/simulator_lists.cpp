// Reads the simulator's own lists: datarefs as name, type, writable, units and description separated by tabs,
// commands as a name, blanks and a description.
#include "simhost/world/simulator_lists.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

constexpr int UnsizedDataBytes = 512;
constexpr long long MostElements = 1 << 24;

// The text up to the next tab, which is taken away with it.
std::string_view TakeField(std::string_view &line) {
    const std::size_t tab = line.find('\t');
    const std::string_view field = line.substr(0, tab);
    line = tab == std::string_view::npos ? std::string_view() : line.substr(tab + 1);
    return field;
}

// "int", "float[16]", "float[56][10]", "byte[]".
bool ParseType(std::string_view text, ListedDataref &dataref) {
    const std::size_t bracket = text.find('[');
    const bool isArray = bracket != std::string_view::npos;
    const std::string_view base = text.substr(0, bracket);
    if (base == "int") {
        dataref.type = isArray ? xplmType_IntArray : xplmType_Int;
    } else if (base == "float") {
        dataref.type = isArray ? xplmType_FloatArray : xplmType_Float;
    } else if (base == "double" && !isArray) {
        dataref.type = xplmType_Double;
    } else if (base == "byte") {
        dataref.type = xplmType_Data;
    } else {
        return false;
    }
    long long elements = 1;
    for (std::string_view rest = isArray ? text.substr(bracket) : std::string_view(); !rest.empty();) {
        const std::size_t close = rest.find(']');
        if (rest.front() != '[' || close == std::string_view::npos) return false;
        int size = UnsizedDataBytes;
        const char *const digits = rest.data() + 1, *const end = rest.data() + close;
        if (digits != end) {
            const auto [parsed, fault] = std::from_chars(digits, end, size);
            if (fault != std::errc() || parsed != end || size <= 0) return false;
        }
        elements *= size;
        if (elements > MostElements) return false;
        rest = rest.substr(close + 1);
    }
    dataref.elements = static_cast<int>(elements);
    return true;
}

bool ReadLine(std::istream &file, std::string &line) {
    if (!std::getline(file, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
}

int ElementCount(XPLMDataRef dataref, XPLMDataTypeID type) {
    if (type == xplmType_IntArray) return XPLMGetDatavi(dataref, nullptr, 0, 0);
    if (type == xplmType_FloatArray) return XPLMGetDatavf(dataref, nullptr, 0, 0);
    if (type == xplmType_Data) return XPLMGetDatab(dataref, nullptr, 0, 0);
    return 1;
}

} // namespace

std::vector<ListedDataref> ReadDatarefList(const std::string &path, std::string &error) {
    std::vector<ListedDataref> datarefs;
    std::ifstream file(path);
    std::string line;
    while (ReadLine(file, line)) {
        std::string_view rest = line;
        ListedDataref dataref;
        dataref.name = TakeField(rest);
        if (dataref.name.empty() || !ParseType(TakeField(rest), dataref)) continue;
        dataref.isWritable = TakeField(rest) == "y";
        datarefs.push_back(std::move(dataref));
    }
    if (datarefs.empty()) error = "no datarefs could be read from " + path;
    return datarefs;
}

std::vector<ListedCommand> ReadCommandList(const std::string &path, std::string &error) {
    std::vector<ListedCommand> commands;
    std::ifstream file(path);
    std::string line;
    while (ReadLine(file, line)) {
        const std::size_t end = line.find_first_of(" \t");
        const std::string name = line.substr(0, end);
        if (name.find('/') == std::string::npos) continue;
        const std::size_t description = line.find_first_not_of(" \t", end);
        commands.push_back({name, description != std::string::npos && end != std::string::npos
                                      ? line.substr(description)
                                      : std::string()});
    }
    if (commands.empty()) error = "no commands could be read from " + path;
    return commands;
}

bool ReadSimulatorLists(const std::string &xplaneFolder, std::string &error) {
    error.clear();
    std::error_code failed;
    const bool areHere = std::filesystem::exists(xplaneFolder + "/DataRefs.txt", failed);
    const std::string folder = xplaneFolder + (areHere ? "/" : "/Resources/plugins/");
    const std::vector<ListedDataref> datarefs = ReadDatarefList(folder + "DataRefs.txt", error);
    if (datarefs.empty()) return false;
    const std::vector<ListedCommand> commands = ReadCommandList(folder + "Commands.txt", error);
    if (commands.empty()) return false;
    for (const ListedDataref &listed : datarefs) {
        const XPLMDataRef known = XPLMFindDataRef(listed.name.c_str());
        if (known && XPLMGetDataRefTypes(known) == listed.type
            && ElementCount(known, listed.type) == listed.elements) {
            continue;
        }
        PublishDataref(listed.name, listed.type, listed.elements, listed.isWritable);
    }
    for (const ListedCommand &listed : commands) AddCommand(listed.name, listed.description);
    return true;
}

} // namespace simhost
