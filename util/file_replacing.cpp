// A file is replaced by writing a neighbour and renaming it. The neighbour is always made anew, so whatever
// lies in its place, a link to somewhere else too, is never written through.
#include "util/file_replacing.h"

#include "util/paths.h"

const char *const NewFileSuffix = ".fennic-new";

namespace {

std::set<std::string> keptFiles; // as they were named, and without links

bool isKept(const std::string &path) {
    return keptFiles.contains(path) || keptFiles.contains(ResolvedPath(path));
}

std::string NameOf(const std::string &path) {
    return path.substr(path.rfind('/') + 1);
}

std::string WithoutLinksInFolder(const std::string &path) {
    const std::string folder = ResolvedPath(FolderOf(path));
    return folder.empty() ? "" : folder + "/" + NameOf(path);
}

// The aircraft's folder, or the plug-in's in it, may be a link of the user's: they are compared as resolved.
bool isInOwnFolders(const std::string &path, const std::string &target) {
    bool isNamedInside = false;
    for (const std::string &folder : {WhatThisAircraftPath(), WhatPluginPath()}) {
        if (folder.empty()) continue;
        isNamedInside |= path.starts_with(folder);
        const std::string resolved = ResolvedPath(folder);
        if (!resolved.empty() && target.starts_with(resolved + "/")) return true;
    }
    return !isNamedInside && target == WithoutLinksInFolder(path);
}

} // namespace

void ResetFiles() {
    keptFiles.clear();
}

bool KeepFile(const std::string &path) {
    const bool isNew = keptFiles.insert(path).second;
    if (const std::string resolved = ResolvedPath(path); !resolved.empty()) keptFiles.insert(resolved);
    return isNew;
}

std::string FolderOf(const std::string &path) {
    const size_t separator = path.rfind('/');
    return separator == std::string::npos ? "./" : path.substr(0, separator + 1);
}

Reason FindTarget(const std::string &path, std::string &target) {
    if (isKept(path)) return "it could not be read, so it stays as it is until the next start";
    target = ResolvedPath(path);
    if (target.empty()) {
        if (isLinkAt(path)) return "it is a link to nowhere";
        if (WhatIsBehind(path) != Presence::Absent) return "the system does not say what is there";
        target = WithoutLinksInFolder(path);
        if (target.empty()) return "its folder is not there";
    } else if (WhatIsBehind(target) != Presence::Present) {
        return "it is no regular file";
    }
    if (!isInOwnFolders(path, target))
        return "a link leads out of the aircraft's folder, so its target stays as it is";
    return MayBeReplaced(target);
}

Fill CopyOf(const std::string &from, Reason &unread) {
    return [&from, &unread](const Write &write) {
        Reason unwritten;
        const auto copyPiece = [&](std::string_view piece) {
            unwritten = write(piece);
            return unwritten.empty();
        };
        const Reading reading = ReadPieces(from, AircraftFile, copyPiece, unread);
        if (reading == Reading::Absent) unread = "there is no such file";
        if (reading == Reading::Failed && !unread.empty()) KeepFile(from);
        return unread.empty() ? unwritten : unread;
    };
}

Reason ReplaceFile(const std::string &path, const Fill &fill) {
    std::string target;
    if (Reason reason = FindTarget(path, target); !reason.empty()) return reason;
    const std::string neighbour = target + NewFileSuffix;
    Reason reason = WriteNewFile(neighbour, target, fill);
    if (!reason.empty()) return reason;
    reason = MoveOver(neighbour, target);
    if (reason.empty())
        SyncFoldersOf({target});
    else
        RemoveFile(neighbour);
    return reason;
}

void SyncFoldersOf(const std::set<std::string> &files) {
    std::set<std::string> folders;
    for (const std::string &file : files) folders.insert(FolderOf(file));
    for (const std::string &folder : folders) SyncFolder(folder);
}
