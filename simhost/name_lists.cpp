// Reads DataRefs.txt (name, type, writable, units and description, separated by tabs, after two header
// lines) and Commands.txt (a name, blanks, a description).
#include "simhost/name_lists.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <string_view>
#include <vector>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

constexpr int MOST_ELEMENTS = 1 << 20;
constexpr int UNSIZED_TEXT = 512; // capacity of "byte[]"

struct ListedType {
    XPLMDataTypeID type = xplmType_Unknown;
    int elements = 1;
    bool isWritable = false;
};

// "float", "int[8]", "float[56][10]" (the product of the sizes), "byte[260]".
ListedType ParseType(std::string_view text) {
    ListedType listed;
    const std::string_view base = text.substr(0, text.find('['));
    const bool array = base.size() < text.size();
    long long elements = 1;
    for (size_t open = base.size(); open < text.size(); open = text.find('[', open + 1)) {
        int size = 0;
        const char *digits = text.data() + open + 1;
        const auto parsed = std::from_chars(digits, text.data() + text.size(), size);
        if (parsed.ptr == digits) size = UNSIZED_TEXT;
        elements *= size;
        if (size < 1 || elements > MOST_ELEMENTS) return {};
    }
    listed.elements = static_cast<int>(elements);
    if (base == "byte")
        listed.type = xplmType_Data;
    else if (base == "int")
        listed.type = array ? xplmType_IntArray : xplmType_Int;
    else if (base == "float")
        listed.type = array ? xplmType_FloatArray : xplmType_Float;
    else if (base == "double" && !array)
        listed.type = xplmType_Double;
    return listed;
}

// The list's type, with the value that the name had before.
void PublishListed(const std::string &name, const ListedType &listed) {
    const XPLMDataRef before = XPLMFindDataRef(name.c_str());
    if (before == nullptr) {
        PublishDataref(name, listed.type, listed.elements, listed.isWritable);
        return;
    }
    if (XPLMGetDataRefTypes(before) == xplmType_Data || listed.type == xplmType_Data) {
        if (XPLMGetDataRefTypes(before) == listed.type) return; // the built-in size is as good
        PublishDataref(name, listed.type, listed.elements, listed.isWritable);
        return;
    }
    std::vector<double> values(static_cast<size_t>(listed.elements));
    for (int i = 0; i < listed.elements; ++i) values[static_cast<size_t>(i)] = GetNumber(name, i);
    PublishDataref(name, listed.type, listed.elements, listed.isWritable);
    for (int i = 0; i < listed.elements; ++i) SetNumber(name, values[static_cast<size_t>(i)], i);
}

void DropLineEnd(std::string &line) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
}

} // namespace

bool PublishNameLists(const std::string &xplaneFolder, std::string &error) {
    const std::string folder = xplaneFolder + "/Resources/plugins/";
    std::ifstream datarefs(folder + "DataRefs.txt"), commands(folder + "Commands.txt");
    if (!datarefs || !commands) {
        error = "no DataRefs.txt and Commands.txt in " + folder;
        return false;
    }
    std::string line;
    std::getline(datarefs, line);
    std::getline(datarefs, line);
    while (std::getline(datarefs, line)) {
        DropLineEnd(line);
        const size_t nameEnd = line.find('\t');
        if (nameEnd == std::string::npos || nameEnd == 0) continue;
        const size_t typeEnd = std::min(line.find('\t', nameEnd + 1), line.size());
        ListedType listed = ParseType(std::string_view(line).substr(nameEnd + 1, typeEnd - nameEnd - 1));
        listed.isWritable = line.compare(typeEnd, 2, "\ty") == 0;
        if (listed.type != xplmType_Unknown) PublishListed(line.substr(0, nameEnd), listed);
    }
    while (std::getline(commands, line)) {
        DropLineEnd(line);
        const size_t nameEnd = line.find(' ');
        if (nameEnd == 0 || line.empty()) continue;
        const size_t description = line.find_first_not_of(' ', nameEnd);
        AddCommand(line.substr(0, nameEnd),
                   description == std::string::npos ? std::string() : line.substr(description));
    }
    return true;
}

} // namespace simhost
