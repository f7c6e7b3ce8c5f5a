// The plug-in's own files are copied from one that is installed; what is the author's is written from the
// template.
#include "authoring/new/new.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "authoring/new/template.h"
#include "util/text.h"

namespace simhost {

namespace {

namespace fs = std::filesystem;

int Refuse(const std::string &why) {
    std::fprintf(stderr, "fennic-sim: %s\n", why.c_str());
    return 1;
}

// The aircraft's files, and those of the plug-in in it.
fs::path PlaceOf(std::string_view file, const fs::path &aircraft, const fs::path &plugin) {
    if (file == "aircraft.acf") return aircraft / (aircraft.filename().string() + ".acf");
    if (file == "aircraft.txt") return plugin / "data" / file;
    return (file.starts_with("systems/") ? plugin : aircraft) / file;
}

// All but the systems files, and what the pilot of the other aircraft has left.
void CopyPlugin(const fs::path &source, const fs::path &target) {
    fs::create_directories(target / "systems");
    for (const fs::directory_entry &entry : fs::directory_iterator(source / "64")) {
        const fs::path name = entry.path().filename();
        if (name == "systems" || name == "shipped") continue;
        fs::copy(entry.path(), target / name, fs::copy_options::recursive);
    }
}

// As it is typed in a shell.
std::string InShell(const std::string &path) {
    return path.find_first_of(" ()&;'$") == std::string::npos ? path : "\"" + path + "\"";
}

} // namespace

int MakeNewAircraft(const NewOptions &options) {
    std::error_code failed;
    const fs::path aircraft = fs::absolute(options.folder + "/", failed).lexically_normal().parent_path();
    const std::string name = options.name.empty() ? aircraft.filename().string() : options.name;
    if (name.empty() || name.front() == ' ' || name.back() == ' '
        || name.find_first_of("\r\n") != std::string::npos)
        return Refuse("\"" + name + "\" cannot be the name of an aircraft");
    if (fs::exists(aircraft, failed) && !fs::is_empty(aircraft, failed))
        return Refuse(options.folder + " is not empty; a new aircraft wants a folder of its own");
    if (!fs::is_directory(options.sourcePlugin + "/64", failed))
        return Refuse("there is no plug-in to begin with, " + options.sourcePlugin);

    const fs::path plugin = aircraft / "plugins" / "fennic" / "64";
    try {
        CopyPlugin(options.sourcePlugin, plugin);
    } catch (const fs::filesystem_error &failure) {
        return Refuse(failure.what());
    }
    for (const TemplateFile &file : TemplateFiles()) {
        const std::string_view fileName = file.name;
        const fs::path place = PlaceOf(fileName, aircraft, plugin);
        std::string text = ReplaceStringAll(file.text, "<NAME>", name);
        if (options.isEmpty && fileName == "systems/_systems.txt")
            text.clear();
        else if (options.isEmpty && !fileName.starts_with("aircraft"))
            continue;
        std::ofstream out(place, std::ios::binary);
        out << text;
        out.close();
        if (!out) return Refuse(place.string() + " cannot be written");
    }
    const fs::path folder = fs::path(options.folder + "/").lexically_normal();
    std::printf("%s is a new aircraft, \"%s\". Its systems files are in\n    %s\n", options.folder.c_str(),
                name.c_str(), (folder / "plugins/fennic/64/systems/").generic_string().c_str());
    if (!options.isEmpty)
        std::printf("Try it:\n    fennic-sim check %s\n    fennic-sim %s\n", InShell(options.folder).c_str(),
                    InShell((folder / "flight.lua").generic_string()).c_str());
    return 0;
}

} // namespace simhost
