// The calls remove, make_folder and list: what flights do with files, beside Lua's own io, on every system.
#include "simhost/flights/state.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "simhost/flights/arguments.h"

namespace fs = std::filesystem;

namespace simhost {

namespace {

int Remove(Call &call) {
    const std::string path = PathFromStart(call.Text(1, "path"));
    std::error_code failed;
    lua_pushboolean(call.lua, fs::remove_all(path, failed) > 0);
    if (failed) call.Fail("cannot remove " + path + ": " + failed.message());
    return 1;
}

int MakeFolder(Call &call) {
    const std::string path = PathFromStart(call.Text(1, "path"));
    std::error_code failed;
    fs::create_directories(path, failed);
    if (!fs::is_directory(path, failed)) call.Fail("cannot make the folder " + path);
    return 0;
}

int List(Call &call) {
    const fs::path folder = PathFromStart(call.Text(1, "folder"));
    std::vector<std::string> files;
    std::error_code failed;
    for (fs::recursive_directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed))
        if (entry->is_regular_file(failed))
            files.push_back(entry->path().lexically_relative(folder).generic_string());
    if (failed) call.Fail("cannot list " + folder.string() + ": " + failed.message());
    std::sort(files.begin(), files.end());
    PushTexts(call.lua, files);
    return 1;
}

} // namespace

void AddFileCalls(lua_State *lua) {
    AddCalls(lua, {{"remove", Bridge<Remove>}, {"make_folder", Bridge<MakeFolder>}, {"list", Bridge<List>}});
}

} // namespace simhost
