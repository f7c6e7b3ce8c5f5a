// Three passes over the set: write neighbours, swap, clean up. While swapping, the old file is kept under a
// second name, so that there is a way back.
#include "util/file_set.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "util/files.h"
#include "util/log.h"

namespace {

struct Member {
    std::string target;    // links followed
    std::string neighbour; // the new content
    std::string old;       // the old file while its place is taken
    bool wasThere = false;
    bool isSwapped = false;
};

bool isUpToDate(const FileOfSet &file) {
    return isFileExistString(file.path) && ReadFileToString(file.path) == file.content;
}

void MakeFolderOf(const std::string &path) {
    const size_t separator = path.rfind('/');
    if (separator != std::string::npos) mkdir(path.substr(0, separator).c_str(), 0777);
}

bool Prepare(const FileOfSet &file, Member &member) {
    MakeFolderOf(file.path);
    char resolved[PATH_MAX];
    struct stat status = {};
    if (realpath(file.path.c_str(), resolved))
        member.target = resolved;
    else if (lstat(file.path.c_str(), &status) != 0)
        member.target = file.path;
    else
        return false; // a link to nowhere
    member.neighbour = member.target + ".fennic-set";
    member.old = member.target + ".fennic-old";
    member.wasThere = stat(member.target.c_str(), &status) == 0;
    if (member.wasThere && access(member.target.c_str(), W_OK) != 0) return false;
    if (!WriteWholeFile(member.neighbour, file.content)) return false;
    return !member.wasThere || chmod(member.neighbour.c_str(), status.st_mode & 07777) == 0;
}

// A disk that knows no second names has the old file renamed.
bool KeepOld(const Member &member) {
    struct stat status = {};
    if (!member.wasThere) return true;
    if (stat(member.target.c_str(), &status) != 0) return false;
    if (!S_ISREG(status.st_mode)) {
        errno = EISDIR;
        return false;
    }
    unlink(member.old.c_str());
    if (link(member.target.c_str(), member.old.c_str()) == 0) return true;
    return rename(member.target.c_str(), member.old.c_str()) == 0;
}

bool Swap(Member &member) {
    if (!KeepOld(member)) return false;
    if (rename(member.neighbour.c_str(), member.target.c_str()) != 0) {
        const int reason = errno;
        if (member.wasThere) rename(member.old.c_str(), member.target.c_str());
        errno = reason;
        return false;
    }
    member.isSwapped = true;
    return true;
}

void SwapBack(const Member &member) {
    if (!member.isSwapped) return;
    const int isBack =
        member.wasThere ? rename(member.old.c_str(), member.target.c_str()) : unlink(member.target.c_str());
    if (isBack != 0) LogFile("FileIO:Cant restore file ", member.target);
}

bool Fail(const FileOfSet &file, std::string &failed) {
    string2debugString("FileIO:Cant write file " + file.path + ": ", std::strerror(errno), 1);
    failed = file.path;
    return false;
}

bool ReplaceAll(const std::vector<const FileOfSet *> &files, std::vector<Member> &members,
                std::string &failed) {
    for (size_t i = 0; i < files.size(); i++)
        if (!Prepare(*files[i], members[i])) return Fail(*files[i], failed);
    for (size_t i = 0; i < files.size(); i++)
        if (!Swap(members[i])) return Fail(*files[i], failed);
    return true;
}

} // namespace

bool WriteFileSet(const std::vector<FileOfSet> &files, std::string &failed) {
    failed.clear();
    std::vector<const FileOfSet *> changed;
    for (const FileOfSet &file : files)
        if (!isUpToDate(file)) changed.push_back(&file);
    std::vector<Member> members(changed.size());
    const bool isReplaced = ReplaceAll(changed, members, failed);
    for (const Member &member : members) {
        if (!isReplaced) SwapBack(member);
        if (member.neighbour.empty()) continue;
        unlink(member.neighbour.c_str());
        unlink(member.old.c_str());
    }
    return isReplaced;
}
