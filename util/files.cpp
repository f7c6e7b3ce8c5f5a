// Files through POSIX calls, which both platforms share. What must be remembered: a file is replaced by
// writing a neighbour named "<file>.fennic-new" and renaming it; a neighbour left by a crash is overwritten
// by the next write.
#include "util/files.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

#include "util/log.h"
#include "util/text.h"

namespace {

const char *const NewFileSuffix = ".fennic-new";

// Opens a file for reading, or -1. Folders open like files on POSIX systems and are refused here.
int OpenForReading(const std::string &path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file >= 0 && (fstat(file, &status) != 0 || S_ISDIR(status.st_mode))) {
        close(file);
        return -1;
    }
    return file;
}

bool ReadAll(const std::string &path, std::string &content) {
    const int file = OpenForReading(path);
    if (file < 0) return false;
    struct stat status = {};
    if (fstat(file, &status) == 0 && status.st_size > 0) content.reserve(static_cast<size_t>(status.st_size));
    char buffer[65536];
    ssize_t count = 0;
    do {
        count = read(file, buffer, sizeof buffer);
        if (count > 0) content.append(buffer, static_cast<size_t>(count));
    } while (count > 0 || (count < 0 && errno == EINTR));
    close(file);
    return count == 0;
}

bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        content.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

// Puts the content of a new file into it; false, with errno set, when that fails.
using Fill = std::function<bool(int file)>;

// The file that a path finally names, so that renaming replaces a link's target and not the link. False for
// a link to nowhere: replacing it would lose the link, and its target is not there to be replaced.
bool FollowLinks(const std::string &path, std::string &target) {
    char resolved[PATH_MAX];
    struct stat status = {};
    if (realpath(path.c_str(), resolved)) {
        target = resolved;
        return true;
    }
    if (errno != ENOENT || lstat(path.c_str(), &status) == 0) return false;
    target = path;
    return errno == ENOENT;
}

// Removes a file after a failure, whose reason stays in errno.
bool GiveUp(const std::string &neighbour) {
    const int reason = errno;
    unlink(neighbour.c_str());
    errno = reason;
    return false;
}

// Writes a new neighbour of path, with the permissions of the file at path, on disk when it returns.
bool WriteNeighbour(const std::string &path, const std::string &neighbour, const Fill &fill) {
    struct stat old = {};
    const bool isReplacing = stat(path.c_str(), &old) == 0;
    if (!isReplacing && errno != ENOENT) return false;
    if (isReplacing && access(path.c_str(), W_OK) != 0) return false;
    const int file = open(neighbour.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) return false;
    bool isWritten = fill(file);
    if (isWritten && isReplacing) isWritten = fchmod(file, old.st_mode & 07777) == 0;
    if (isWritten) isWritten = fsync(file) == 0;
    const int reason = errno;
    const bool isClosed = close(file) == 0;
    if (isWritten) return isClosed || GiveUp(neighbour);
    errno = reason;
    return GiveUp(neighbour);
}

// Makes a renaming last through a loss of power, so that a backup is on disk before what it is a backup of
// is replaced. Some file systems cannot do this; the files are whole all the same.
void SyncFolderOf(const std::string &path) {
    const size_t separator = path.rfind('/');
    const std::string folder = separator == std::string::npos ? "." : path.substr(0, separator + 1);
    const int handle = open(folder.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) return;
    fsync(handle);
    close(handle);
}

bool ReplaceFile(const std::string &path, const Fill &fill) {
    std::string target;
    if (!FollowLinks(path, target)) return false;
    const std::string neighbour = target + NewFileSuffix;
    if (!WriteNeighbour(target, neighbour, fill)) return false;
    if (rename(neighbour.c_str(), target.c_str()) != 0) return GiveUp(neighbour);
    SyncFolderOf(target);
    return true;
}

// Copies what is left of one open file into another, a piece at a time.
bool CopyAll(int from, int to) {
    char buffer[65536];
    while (true) {
        const ssize_t count = read(from, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        if (!WriteAll(to, std::string_view(buffer, static_cast<size_t>(count)))) return false;
    }
}

// The reason is in errno.
void LogCantWrite(const std::string &path) {
    string2debugString("FileIO:Cant write file " + path + ": ", std::strerror(errno), 1);
}

std::vector<std::string> SortedNames(const std::string &folder) {
    std::vector<std::string> names;
    DIR *handle = opendir(folder.c_str());
    if (!handle) return names;
    while (const dirent *entry = readdir(handle)) names.emplace_back(entry->d_name);
    closedir(handle);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

int isFileExistString(const std::string &path) {
    const int file = OpenForReading(path);
    if (file < 0) return 0;
    close(file);
    return 1;
}

int isFileExistChar(const char *path) {
    return path ? isFileExistString(path) : 0;
}

Presence WhatIsAt(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0)
        return S_ISREG(status.st_mode) ? Presence::Present : Presence::Unknown;
    return errno == ENOENT || errno == ENOTDIR ? Presence::Absent : Presence::Unknown;
}

std::vector<FileLine> ReadFileLines(const std::string &path) {
    std::vector<FileLine> lines;
    std::string content;
    if (!ReadAll(path, content)) {
        LogFile("FileIO:Cant open file ", path);
        return lines;
    }
    std::string_view text = content;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3); // a byte-order mark, as some editors leave it
    int number = 0;
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        number++;
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty()) continue;
        std::string kept(line);
        if (Contains(line, "\r")) kept = RemoveNR(std::move(kept));
        if (!kept.empty()) lines.push_back({number, std::move(kept)});
    }
    return lines;
}

std::vector<std::string> ReadFileToVector(const std::string &path) {
    std::vector<FileLine> lines = ReadFileLines(path);
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (FileLine &line : lines) texts.push_back(std::move(line.text));
    return texts;
}

std::string ReadFileToString(const std::string &path) {
    std::string content;
    if (ReadAll(path, content)) return content;
    LogFile("Nimbrel:FileIO:Cant open file ", path);
    return "";
}

int FileLineSize(const std::string &path) {
    return static_cast<int>(ReadFileLines(path).size());
}

bool WriteWholeFile(const std::string &path, std::string_view content) {
    if (ReplaceFile(path, [&](int file) { return WriteAll(file, content); })) return true;
    LogCantWrite(path);
    return false;
}

int copyFile(const std::string &from, const std::string &to) {
    const int source = OpenForReading(from);
    const bool isCopied = source >= 0 && ReplaceFile(to, [&](int file) { return CopyAll(source, file); });
    if (!isCopied && source >= 0) LogCantWrite(to);
    if (source >= 0) close(source);
    if (isCopied)
        string2debugString("copyFile from: " + from, " to: " + to, 1);
    else
        LogFile("copyFile Error:", from);
    return isCopied ? 1 : 0;
}

void RemoveUnfinished(const std::string &path) {
    std::string target;
    if (FollowLinks(path, target)) unlink((target + NewFileSuffix).c_str());
}

std::vector<std::string> ReadFileListFromFolder(const std::string &folder) {
    std::vector<std::string> names = SortedNames(folder);
    std::erase_if(names,
                  [](const std::string &name) { return !Contains(name, ".") || Contains(name, ".."); });
    return names;
}

std::vector<std::string> ReadFolderListFromFolder(const std::string &folder) {
    std::vector<std::string> folders;
    for (const std::string &name : SortedNames(folder))
        if (!Contains(name, ".")) folders.push_back(folder + "/" + name);
    return folders;
}

bool isSafeFileName(std::string_view name) {
    const bool hasForbidden = name.find_first_of(std::string_view("/\\:\0", 4)) != std::string_view::npos;
    return !name.empty() && name != "." && name != ".." && !hasForbidden;
}
