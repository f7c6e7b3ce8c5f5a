// Files through POSIX calls, which Linux and macOS share. A call that a signal interrupts is made again.
#include "util/file_calls.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "util/numbers.h"

namespace {

const size_t PieceSize = 65536;
const mode_t PermissionBits = 07777;

Reason LastError() {
    return std::strerror(errno);
}

bool isAbsence(int error) {
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

class OpenFile {
public:
    explicit OpenFile(int file) : file(file) {}
    ~OpenFile() { Close(); }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    operator int() const { return file; }
    bool Close() {
        const int closed = file < 0 ? 0 : close(file);
        file = -1;
        return closed == 0;
    }

private:
    int file;
};

int OpenAgain(const std::string &path, int flags) {
    int file = -1;
    do {
        file = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, 0666);
    } while (file < 0 && errno == EINTR);
    return file;
}

// A pipe without a writer would make a blocking open wait for ever.
int OpenForReading(const std::string &path) {
    return OpenAgain(path, O_RDONLY | O_NONBLOCK);
}

Reading Examine(const OpenFile &file, struct stat &status, Reason &reason) {
    if (file < 0 && isAbsence(errno)) return Reading::Absent;
    if (file < 0 || fstat(file, &status) != 0)
        reason = LastError();
    else if (!S_ISREG(status.st_mode))
        reason = "it is no regular file";
    return reason.empty() ? Reading::Read : Reading::Failed;
}

ssize_t ReadAgain(int file, char *buffer) {
    ssize_t count = 0;
    do {
        count = read(file, buffer, PieceSize);
    } while (count < 0 && errno == EINTR);
    return count;
}

Reason WriteAll(int file, std::string_view piece) {
    while (!piece.empty()) {
        const ssize_t count = write(file, piece.data(), piece.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return LastError();
        piece.remove_prefix(static_cast<size_t>(count));
    }
    return "";
}

Reason SyncFile(int file) {
    int synced = 0;
    do {
        synced = fsync(file);
    } while (synced != 0 && errno == EINTR);
    return synced == 0 ? "" : LastError();
}

// Disks without permissions refuse to change them, and have the same for all files.
Reason TakePermissions(int file, const struct stat &like) {
    struct stat status = {};
    if (fstat(file, &status) != 0) return LastError();
    if ((status.st_mode & PermissionBits) == (like.st_mode & PermissionBits)) return "";
    return fchmod(file, like.st_mode & PermissionBits) == 0 ? "" : LastError();
}

std::string AtMost(uint64_t limit) {
    return "it is larger than " + int2string(static_cast<int>(limit >> 20)) + " MB";
}

} // namespace

Reading ProbeFile(const std::string &path, Reason &reason) {
    const OpenFile file(OpenForReading(path));
    struct stat status = {};
    return Examine(file, status, reason);
}

Reading ReadPieces(const std::string &path, uint64_t limit, const TakePiece &take, Reason &reason) {
    const OpenFile file(OpenForReading(path));
    struct stat status = {};
    if (const Reading found = Examine(file, status, reason); found != Reading::Read) return found;
    if (static_cast<uint64_t>(status.st_size) > limit) reason = AtMost(limit);
    char buffer[PieceSize];
    uint64_t total = 0;
    while (reason.empty()) {
        const ssize_t count = ReadAgain(file, buffer);
        if (count < 0) reason = LastError();
        if (count <= 0) break;
        total += static_cast<uint64_t>(count);
        if (total > limit)
            reason = AtMost(limit);
        else if (!take(std::string_view(buffer, static_cast<size_t>(count))))
            return Reading::Failed;
    }
    if (reason.empty() && fstat(file, &status) != 0) reason = LastError();
    if (reason.empty() && static_cast<uint64_t>(status.st_size) != total)
        reason = "its length changed while it was read";
    return reason.empty() ? Reading::Read : Reading::Failed;
}

Presence WhatIsBehind(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0)
        return S_ISREG(status.st_mode) ? Presence::Present : Presence::Unknown;
    return isAbsence(errno) ? Presence::Absent : Presence::Unknown;
}

bool isLinkAt(const std::string &path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::string ResolvedPath(const std::string &path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) ? resolved : "";
}

Reason WriteNewFile(const std::string &path, const std::string &like, const Fill &fill) {
    struct stat old = {};
    const bool hasPattern = stat(like.c_str(), &old) == 0;
    if (!hasPattern && !isAbsence(errno)) return LastError();
    unlink(path.c_str());
    OpenFile file(OpenAgain(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW));
    if (file < 0) return LastError();
    Reason reason = fill([&file](std::string_view piece) { return WriteAll(file, piece); });
    if (reason.empty() && hasPattern) reason = TakePermissions(file, old);
    if (reason.empty()) reason = SyncFile(file);
    if (!file.Close() && reason.empty()) reason = LastError();
    if (!reason.empty()) unlink(path.c_str());
    return reason;
}

Reason MayBeReplaced(const std::string &path) {
    return access(path.c_str(), W_OK) == 0 || isAbsence(errno) ? "" : LastError();
}

Reason MoveOver(const std::string &from, const std::string &to) {
    return rename(from.c_str(), to.c_str()) == 0 ? "" : LastError();
}

bool GiveSecondName(const std::string &path, const std::string &second) {
    return link(path.c_str(), second.c_str()) == 0;
}

bool RemoveFile(const std::string &path) {
    return unlink(path.c_str()) == 0 || isAbsence(errno);
}

void SyncFolder(const std::string &folder) {
    const OpenFile handle(OpenAgain(folder, O_RDONLY | O_NONBLOCK));
    if (handle >= 0) fsync(handle);
}

void MakeFolder(const std::string &folder) {
    mkdir(folder.c_str(), 0777);
}

bool ListFolder(const std::string &folder, std::vector<std::string> &names) {
    DIR *handle = opendir(folder.c_str());
    if (!handle) return false;
    const dirent *entry = nullptr;
    do {
        errno = 0; // the only sign that tells a failure from the end
        entry = readdir(handle);
        if (entry) names.emplace_back(entry->d_name);
    } while (entry);
    const bool isComplete = errno == 0;
    closedir(handle);
    std::sort(names.begin(), names.end());
    return isComplete;
}
