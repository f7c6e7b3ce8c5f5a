// The journal is the moment of decision. Before it is there, the new files beside the targets are nothing but
// rubbish; once it is there, all of them are complete and on disk. It goes before anything is undone and when
// all is done, and the old files, kept under a second name, go behind it.
#include "util/file_set.h"

#include <set>

#include "util/file_calls.h"
#include "util/file_replacing.h"
#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"

namespace {

const char *const SetSuffix = ".fennic-set"; // the new content
const char *const OldSuffix = ".fennic-old"; // the old file while the set is replaced
const char *const JournalName = "_set.fennic-journal";

struct Member {
    std::string target; // links followed; empty: nothing was done yet
    bool wasThere = false;
    bool isSwapped = false;
};

std::string NewContentOf(const std::string &target) {
    return target + SetSuffix;
}

std::string OldContentOf(const std::string &target) {
    return target + OldSuffix;
}

bool isUpToDate(const FileOfSet &file) {
    std::string_view rest = file.content;
    const auto compare = [&rest](std::string_view piece) {
        const bool isSame = rest.starts_with(piece);
        if (isSame) rest.remove_prefix(piece.size());
        return isSame;
    };
    Reason reason;
    return ReadPieces(file.path, rest.size(), compare, reason) == Reading::Read && rest.empty();
}

// A disk that knows no second names gets a copy. The file itself never leaves its place.
Reason KeepOld(const std::string &target) {
    const std::string old = OldContentOf(target);
    RemoveFile(old);
    if (GiveSecondName(target, old)) return "";
    const std::string unfinished = old + NewFileSuffix;
    Reason unread;
    const Reason reason = WriteNewFile(unfinished, target, CopyOf(target, unread));
    return reason.empty() ? MoveOver(unfinished, old) : reason;
}

Reason Prepare(const FileOfSet &file, Member &member) {
    std::string target;
    Reason reason = FindTarget(file.path, target);
    if (!reason.empty()) return reason;
    member.target = target;
    member.wasThere = WhatIsBehind(target) != Presence::Absent;
    reason = WriteNewFile(NewContentOf(target), target,
                          [&file](const Write &write) { return write(file.content); });
    return reason.empty() && member.wasThere ? KeepOld(target) : reason;
}

Reason WriteJournal(const std::string &folder, const std::vector<const FileOfSet *> &files) {
    std::string names;
    for (const FileOfSet *file : files) names += file->path.substr(folder.size()) + "\n";
    return ReplaceFile(folder + JournalName, [&names](const Write &write) { return write(names); });
}

using Targets = std::set<std::string>; // links followed, so that they may be in other folders

Targets TargetsOf(const std::vector<Member> &members) {
    Targets targets;
    for (const Member &member : members)
        if (!member.target.empty()) targets.insert(member.target);
    return targets;
}

// On disk before anything that comes after it, and behind all that came before it.
bool RemoveJournal(const std::string &folder, const Targets &targets) {
    SyncFoldersOf(targets);
    if (!RemoveFile(folder + JournalName)) return false;
    SyncFolder(folder);
    return true;
}

void RemoveBeside(const std::string &target) {
    RemoveFile(NewContentOf(target));
    RemoveFile(OldContentOf(target));
    RemoveFile(OldContentOf(target) + NewFileSuffix);
    RemoveFile(target + NewFileSuffix);
}

// The new files go last: as long as one is there, FinishFileSet sees that a set is to be undone.
void Undo(const std::string &folder, const std::vector<Member> &members) {
    const Targets targets = TargetsOf(members);
    bool isUndone = RemoveJournal(folder, targets);
    for (const Member &member : members) {
        if (!isUndone) break;
        if (!member.isSwapped) continue;
        const Reason reason = member.wasThere
                                  ? MoveOver(OldContentOf(member.target), member.target)
                                  : Reason(RemoveFile(member.target) ? "" : "it cannot be removed");
        if (reason.empty()) continue;
        LogFileProblem("FileIO:Cant restore file ", member.target, reason);
        isUndone = false;
    }
    SyncFoldersOf(targets);
    for (const std::string &target : targets)
        if (isUndone) RemoveBeside(target);
}

bool Fail(const std::string &path, const Reason &reason, std::string &failed) {
    LogFileProblem("FileIO:Cant write file ", path, reason);
    failed = path;
    return false;
}

bool ReplaceAll(const std::string &folder, const std::vector<const FileOfSet *> &files,
                std::vector<Member> &members, std::string &failed) {
    for (size_t i = 0; i < files.size(); i++)
        if (const Reason reason = Prepare(*files[i], members[i]); !reason.empty())
            return Fail(files[i]->path, reason, failed);
    if (const Reason reason = WriteJournal(folder, files); !reason.empty())
        return Fail(folder + JournalName, reason, failed);
    for (size_t i = 0; i < files.size(); i++) {
        const Reason reason = MoveOver(NewContentOf(members[i].target), members[i].target);
        if (!reason.empty()) return Fail(files[i]->path, reason, failed);
        members[i].isSwapped = true;
    }
    return true;
}

// What FinishFileSet looks at.
struct Leftovers {
    Targets targets; // files beside which something may lie
    bool hasNewContent = false;
};

// Links are followed: what was beside their targets is beside them still.
bool FindLeftovers(const std::string &folder, Leftovers &leftovers) {
    std::vector<std::string> names;
    if (!ListFolder(folder, names)) return WhatIsBehind(folder + ".") == Presence::Absent;
    for (const std::string &name : names) {
        std::string base;
        for (const std::string suffix : {SetSuffix, OldSuffix, NewFileSuffix})
            if (name.size() > suffix.size() && name.ends_with(suffix))
                base = name.substr(0, name.size() - suffix.size());
        if (base.empty() && isLinkAt(folder + name)) base = name;
        std::string target;
        if (base.empty() || !FindTarget(folder + base, target).empty()) continue;
        leftovers.targets.insert(target);
        if (WhatIsBehind(NewContentOf(target)) == Presence::Present) leftovers.hasNewContent = true;
    }
    return true;
}

// All that the journal names; what has no new content beside it any more has taken it already.
Reason CompleteSet(const std::string &folder) {
    std::vector<FileLine> lines;
    if (ReadLines(folder + JournalName, lines) != Reading::Read) return "the journal cannot be read";
    Targets targets;
    for (const FileLine &line : lines) {
        if (!isSafeFileName(line.text)) continue;
        std::string target;
        if (Reason reason = FindTarget(folder + line.text, target); !reason.empty()) return reason;
        targets.insert(target);
        if (WhatIsBehind(NewContentOf(target)) == Presence::Absent) continue;
        if (Reason reason = MoveOver(NewContentOf(target), target); !reason.empty()) return reason;
    }
    if (!RemoveJournal(folder, targets)) return "the journal cannot be removed";
    string2debugString("FileIO:A save that had been broken off was completed in ", folder, 1);
    return "";
}

Reason UndoSet(const std::string &folder, const Leftovers &leftovers) {
    int restored = 0;
    for (const std::string &target : leftovers.targets) {
        if (WhatIsBehind(OldContentOf(target)) != Presence::Present) continue;
        if (!leftovers.hasNewContent && WhatIsBehind(target) != Presence::Absent) continue;
        if (Reason reason = MoveOver(OldContentOf(target), target); !reason.empty()) return reason;
        restored++;
    }
    if (restored > 0) string2debugString("FileIO:A save that had been broken off was undone in ", folder, 1);
    SyncFoldersOf(leftovers.targets);
    return "";
}

} // namespace

bool WriteFileSet(const std::vector<FileOfSet> &files, std::string &failed) {
    failed.clear();
    std::vector<const FileOfSet *> changed;
    for (const FileOfSet &file : files)
        if (!isUpToDate(file)) changed.push_back(&file);
    if (changed.empty()) return true;
    const std::string folder = FolderOf(changed.front()->path);
    MakeFolder(folder);
    if (!FinishFileSet(folder)) {
        failed = changed.front()->path;
        return false;
    }
    std::vector<Member> members(changed.size());
    if (!ReplaceAll(folder, changed, members, failed)) {
        Undo(folder, members);
        return false;
    }
    const Targets targets = TargetsOf(members);
    if (RemoveJournal(folder, targets))
        for (const std::string &target : targets) RemoveBeside(target);
    return true;
}

bool FinishFileSet(const std::string &folder) {
    Reason reason;
    Leftovers leftovers;
    if (WhatIsBehind(folder + JournalName) != Presence::Absent) reason = CompleteSet(folder);
    if (reason.empty() && !FindLeftovers(folder, leftovers)) reason = "the folder cannot be read";
    if (reason.empty()) reason = UndoSet(folder, leftovers);
    if (!reason.empty()) {
        LogFileProblem("FileIO:Cant finish the save that was broken off in ", folder, reason);
        return false;
    }
    for (const std::string &target : leftovers.targets) RemoveBeside(target);
    return true;
}
