// Lines such as "P _obja/7/_v10_att_file_stl seats.obj". Their order in the file says nothing.
#include "simhost/drawing/attached_objects.h"

#include <fstream>
#include <iterator>
#include <map>
#include <string_view>

#include "simhost/number_text.h"

namespace simhost {

namespace {

constexpr float MetresPerFoot = 0.3048F;

struct Entry {
    std::string file;
    float x = 0, y = 0, z = 0;              // feet
    float roll = 0, heading = 0, pitch = 0; // degrees
};

constexpr struct {
    std::string_view key;
    float Entry::*field;
} Numbers[] = {{"_v10_att_x_acf_prt_ref", &Entry::x}, {"_v10_att_y_acf_prt_ref", &Entry::y},
               {"_v10_att_z_acf_prt_ref", &Entry::z}, {"_v10_att_phi_ref", &Entry::roll},
               {"_v10_att_psi_ref", &Entry::heading}, {"_v10_att_the_ref", &Entry::pitch}};

void ReadProperty(std::string_view key, std::string_view value, std::map<int, Entry> &entries, int &count) {
    if (key == "count") {
        ReadWholeNumber(value, count);
        return;
    }
    const std::size_t slash = key.find('/');
    int index = 0;
    if (slash == std::string_view::npos || !ReadWholeNumber(key.substr(0, slash), index)) return;
    key.remove_prefix(slash + 1);
    Entry &entry = entries[index];
    if (key == "_v10_att_file_stl") entry.file = value;
    for (const auto &number : Numbers)
        if (key == number.key) ReadWholeNumber(value, entry.*number.field);
}

Matrix PlaceOf(const Entry &entry) {
    return Translation(entry.x * MetresPerFoot, entry.y * MetresPerFoot, entry.z * MetresPerFoot)
           * Rotation(0, 1, 0, -entry.heading) * Rotation(1, 0, 0, entry.pitch)
           * Rotation(0, 0, 1, -entry.roll);
}

} // namespace

std::vector<AttachedObject> ReadAttachedObjects(const std::string &aircraftFile) {
    constexpr std::string_view start = "P _obja/";
    std::map<int, Entry> entries;
    int count = 0;
    std::ifstream file(aircraftFile, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        std::string_view rest = line;
        if (!rest.starts_with(start)) continue;
        rest.remove_prefix(start.size());
        while (!rest.empty() && (rest.back() == '\r' || rest.back() == ' ')) rest.remove_suffix(1);
        const std::size_t blank = rest.find(' ');
        if (blank == std::string_view::npos) continue;
        ReadProperty(rest.substr(0, blank), rest.substr(blank + 1), entries, count);
    }
    std::vector<AttachedObject> attached;
    for (const auto &[index, entry] : entries)
        if (index >= 0 && index < count && !entry.file.empty())
            attached.push_back({entry.file, PlaceOf(entry)});
    return attached;
}

} // namespace simhost
