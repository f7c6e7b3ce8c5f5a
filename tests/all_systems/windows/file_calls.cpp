// Files on Windows, where somebody else may hold one: what is held for a moment is waited for, what is held
// for longer stays as it was. And names of any length and letters.
#include "util/file_calls.h"

#include <cstdio>
#include <filesystem>
#include <thread>

#include <windows.h>

namespace {

namespace fs = std::filesystem;

int failures = 0;

void Expect(bool isSo, const char *what, const std::string &found = "") {
    if (isSo) return;
    std::printf("not so: %s: %s\n", what, found.c_str());
    failures++;
}

std::string Written(const std::string &path, const std::string &text) {
    return WriteNewFile(path, "", [&](const Write &write) { return write(text); });
}

std::string Content(const std::string &path) {
    std::string text;
    Reason reason;
    const TakePiece take = [&](std::string_view piece) { return text.append(piece), true; };
    return ReadPieces(path, 1000, take, reason) == Reading::Read ? text : "unread: " + reason;
}

// As a virus scanner holds a file, for so long.
class Held {
public:
    Held(const std::string &path, DWORD milliseconds)
        : file(CreateFileW(fs::path(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)),
          letsGo([this, milliseconds] {
              Sleep(milliseconds);
              CloseHandle(file);
          }) {
        Expect(file != INVALID_HANDLE_VALUE, "held", path);
    }
    ~Held() { letsGo.join(); }

private:
    HANDLE file;
    std::thread letsGo;
};

void WhatIsHeldForAMomentIsWaitedFor(const std::string &folder) {
    const std::string old = folder + "old.txt", fresh = folder + "fresh.txt";
    Expect(Written(old, "old").empty() && Written(fresh, "new").empty(), "written");
    {
        const Held held(old, 30);
        const Reason reason = MoveOver(fresh, old);
        Expect(reason.empty(), "replaced", reason);
    }
    {
        const Held held(old, 30);
        Expect(Content(old) == "new", "read", Content(old));
    }
    const Held held(old, 30);
    Expect(RemoveFile(old) && WhatIsBehind(old) == Presence::Absent, "removed");
}

void WhatIsHeldForLongerStays(const std::string &folder) {
    const std::string old = folder + "old.txt", fresh = folder + "fresh.txt";
    Expect(Written(old, "old").empty() && Written(fresh, "new").empty(), "written");
    {
        const Held held(old, 2000);
        Expect(!MoveOver(fresh, old).empty() && !RemoveFile(old), "refused");
    }
    Expect(Content(old) == "old" && Content(fresh) == "new", "both are there", Content(old) + Content(fresh));
    SetFileAttributesW(fs::path(old).c_str(), FILE_ATTRIBUTE_READONLY);
    Expect(!MayBeReplaced(old).empty() && MayBeReplaced(fresh).empty(), "read-only");
    SetFileAttributesW(fs::path(old).c_str(), FILE_ATTRIBUTE_NORMAL);
}

// As the calls of the system take a name that may be long.
std::wstring LongName(const std::string &path) {
    return L"\\\\?\\" + fs::path(path).make_preferred().wstring();
}

void NamesAreOfAnyLengthAndLetters(const std::string &root) {
    const std::string name = "Самолёты – größte ✈ Flotte, viel länger als nötig";
    std::vector<std::string> folders = {root}, names;
    for (int deep = 0; deep < 6; deep++) {
        folders.push_back(folders.back() + name + "/");
        MakeFolder(folders.back());
    }
    const std::string folder = folders.back(), path = folder + name + ".txt";
    Expect(folder.size() > 400 && Written(path, "text").empty() && Content(path) == "text", "a long name",
           path);
    Expect(ListFolder(folder, names) && names.size() == 3 && names[2] == name + ".txt", "listed",
           names.empty() ? "" : names.back());
    // Wine knows no long names in this one call.
    Expect(ResolvedPath(folders[1]).ends_with("/" + name), "resolved", ResolvedPath(folders[1]));
    Expect(RemoveFile(path), "removed", path);
    for (; folders.size() > 1; folders.pop_back()) RemoveDirectoryW(LongName(folders.back()).c_str());
}

} // namespace

int wmain(int, wchar_t **words) {
    const std::u8string text =
        (fs::absolute(words[0]).parent_path() / "files_of_the_test").generic_u8string();
    const std::string folder(text.begin(), text.end());
    MakeFolder(folder);
    WhatIsHeldForAMomentIsWaitedFor(folder + "/");
    WhatIsHeldForLongerStays(folder + "/");
    NamesAreOfAnyLengthAndLetters(folder + "/");
    for (const char *file : {"/old.txt", "/fresh.txt"}) RemoveFile(folder + file);
    RemoveDirectoryW(LongName(folder).c_str());
    std::printf(failures == 0 ? "files: all as it should be\n" : "files: %d not as they should be\n",
                failures);
    return failures == 0 ? 0 : 1;
}
