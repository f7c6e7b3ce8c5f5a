// Text files as the modules know them, on top of the system's calls. What must be remembered: a file whose
// reading failed is noted in file_replacing.cpp, by every reader here.
#include "util/files.h"

#include <algorithm>

#include "util/file_calls.h"
#include "util/file_replacing.h"
#include "util/log.h"
#include "util/text.h"

namespace {

const size_t LongestLine = 16 << 20;    // bytes
const size_t WriteTogether = 256 << 10; // bytes

// A read that take ended is no fault of the file's.
Reading ReadNotingFailure(const std::string &path, uint64_t limit, const TakePiece &take, Reason &reason) {
    const Reading reading = ReadPieces(path, limit, take, reason);
    if (reading == Reading::Failed && !reason.empty()) KeepFile(path);
    return reading;
}

void LogCantOpen(const std::string &path, const Reason &reason) {
    LogFileProblem("FileIO:Cant open file ", path, reason);
}

void LogCantWrite(const std::string &path, const Reason &reason) {
    LogFileProblem("FileIO:Cant write file ", path, reason);
}

// Cuts pieces into lines; what a piece leaves of a line is kept for the next one.
class LineCutter {
public:
    LineCutter(const TakeLine &take, Reason &reason) : take(take), reason(reason) {}

    bool TakePiece(std::string_view piece) {
        for (size_t end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
            if (!TakeOne(piece.substr(0, end))) return false;
            piece.remove_prefix(end + 1);
        }
        rest += piece;
        if (rest.size() > LongestLine) reason = "a line is longer than 16 MB";
        return reason.empty();
    }

    bool TakeRest() { return rest.empty() || take(rest); }

private:
    const TakeLine &take;
    Reason &reason;
    std::string rest;

    bool TakeOne(std::string_view end) {
        if (rest.empty()) return take(end);
        rest += end;
        const bool goesOn = take(rest);
        rest.clear();
        return goesOn;
    }
};

Reading ReadEachLine(const std::string &path, uint64_t limit, const TakeLine &take, Reason &reason) {
    Reason lineReason;
    LineCutter cutter(take, lineReason);
    const Reading reading = ReadNotingFailure(
        path, limit, [&](std::string_view piece) { return cutter.TakePiece(piece); }, reason);
    if (reading == Reading::Read) return cutter.TakeRest() ? Reading::Read : Reading::Failed;
    if (!lineReason.empty()) {
        KeepFile(path);
        reason = lineReason;
    }
    return reading;
}

// A byte-order mark, as some editors leave it, is no part of the first line.
std::string_view WithoutMark(int number, std::string_view line) {
    if (number == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    return line;
}

// Adds the line unless nothing is left of it.
void AddLine(std::vector<FileLine> &lines, int number, std::string_view line) {
    line = WithoutMark(number, line);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) return;
    std::string kept(line);
    if (Contains(line, "\r")) kept = RemoveNR(std::move(kept));
    if (!kept.empty()) lines.push_back({number, std::move(kept)});
}

Reading ReadLines(const std::string &path, std::vector<FileLine> &lines, uint64_t limit, Reason &reason) {
    lines.clear();
    int number = 0;
    const auto add = [&](std::string_view line) {
        AddLine(lines, ++number, line);
        return true;
    };
    const Reading reading = ReadEachLine(path, limit, add, reason);
    if (reading != Reading::Read) lines.clear();
    return reading;
}

Reading CountLines(const std::string &path, int &lines, uint64_t limit, Reason &reason) {
    lines = 0;
    int number = 0;
    const auto count = [&](std::string_view line) {
        lines += WithoutMark(++number, line).find_first_not_of('\r') != std::string_view::npos;
        return true;
    };
    const Reading reading = ReadEachLine(path, limit, count, reason);
    if (reading != Reading::Read) lines = 0;
    return reading;
}

Reading ReadWholeFile(const std::string &path, std::string &content, uint64_t limit, Reason &reason) {
    content.clear();
    const auto add = [&content](std::string_view piece) {
        content += piece;
        return true;
    };
    const Reading reading = ReadNotingFailure(path, limit, add, reason);
    if (reading != Reading::Read) content.clear();
    return reading;
}

bool isWritten(const std::string &path, const Fill &fill) {
    const Reason reason = ReplaceFile(path, fill);
    if (!reason.empty()) LogCantWrite(path, reason);
    return reason.empty();
}

} // namespace

int isFileExistString(const std::string &path) {
    Reason reason;
    const Reading found = ProbeFile(path, reason);
    if (found == Reading::Failed && KeepFile(path)) LogCantOpen(path, reason);
    return found == Reading::Read ? 1 : 0;
}

int isFileExistChar(const char *path) {
    return path ? isFileExistString(path) : 0;
}

Presence WhatIsAt(const std::string &path) {
    return WhatIsBehind(path);
}

Reading ReadEachLine(const std::string &path, uint64_t limit, const TakeLine &take) {
    Reason reason;
    const Reading reading = ReadEachLine(path, limit, take, reason);
    if (reading == Reading::Failed && !reason.empty()) LogCantOpen(path, reason);
    return reading;
}

Reading ReadLines(const std::string &path, std::vector<FileLine> &lines, uint64_t limit) {
    Reason reason;
    const Reading reading = ReadLines(path, lines, limit, reason);
    if (reading == Reading::Failed) LogCantOpen(path, reason);
    return reading;
}

std::vector<FileLine> ReadFileLines(const std::string &path, uint64_t limit) {
    std::vector<FileLine> lines;
    Reason reason;
    if (ReadLines(path, lines, limit, reason) != Reading::Read) LogCantOpen(path, reason);
    return lines;
}

std::vector<std::string> ReadFileToVector(const std::string &path) {
    std::vector<FileLine> lines = ReadFileLines(path);
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (FileLine &line : lines) texts.push_back(std::move(line.text));
    return texts;
}

Reading ReadWholeFile(const std::string &path, std::string &content, uint64_t limit) {
    Reason reason;
    const Reading reading = ReadWholeFile(path, content, limit, reason);
    if (reading == Reading::Failed) LogCantOpen(path, reason);
    return reading;
}

std::string ReadFileToString(const std::string &path, uint64_t limit) {
    std::string content;
    Reason reason;
    if (ReadWholeFile(path, content, limit, reason) != Reading::Read)
        LogFileProblem("Nimbrel:FileIO:Cant open file ", path, reason);
    return content;
}

Reading CountLines(const std::string &path, int &lines, uint64_t limit) {
    Reason reason;
    const Reading reading = CountLines(path, lines, limit, reason);
    if (reading == Reading::Failed) LogCantOpen(path, reason);
    return reading;
}

int FileLineSize(const std::string &path) {
    Reason reason;
    int lines = 0;
    if (CountLines(path, lines, SystemsFile, reason) != Reading::Read) LogCantOpen(path, reason);
    return lines;
}

bool WriteWholeFile(const std::string &path, std::string_view content) {
    return isWritten(path, [&](const Write &write) { return write(content); });
}

bool WriteFileInPieces(const std::string &path, const FillFile &fill) {
    const auto fillNew = [&](const Write &write) {
        Reason reason;
        std::string waiting; // small pieces go to the disk together
        const auto writeWaiting = [&] {
            reason = write(waiting);
            waiting.clear();
            return reason.empty();
        };
        const auto writePiece = [&](std::string_view piece) {
            waiting += piece;
            return waiting.size() < WriteTogether || writeWaiting();
        };
        const bool isComplete = fill(writePiece) && writeWaiting();
        return isComplete || !reason.empty() ? reason : "there is nothing whole to put in its place";
    };
    return isWritten(path, fillNew);
}

int copyFile(const std::string &from, const std::string &to) {
    Reason unread;
    const Reason reason = ReplaceFile(to, CopyOf(from, unread));
    if (reason.empty()) {
        string2debugString("copyFile from: " + from, " to: " + to, 1);
        return 1;
    }
    if (unread.empty()) LogCantWrite(to, reason);
    LogFileProblem("copyFile Error:", from, unread);
    return 0;
}

void KeepUntilNextStart(const std::string &path) {
    KeepFile(path);
}

void RemoveUnfinished(const std::string &path) {
    std::string target;
    if (FindTarget(path, target).empty()) RemoveFile(target + NewFileSuffix);
}

void RemoveUnfinishedIn(const std::string &folder) {
    std::vector<std::string> names;
    ListFolder(folder, names);
    for (const std::string &name : names)
        if (name.ends_with(NewFileSuffix) && RemoveFile(folder + name))
            string2debugString("FileIO:Removed what a write that was broken off had left: ", folder + name,
                               1);
}

std::vector<std::string> ReadFileListFromFolder(const std::string &folder) {
    std::vector<std::string> names;
    if (!ListFolder(folder, names)) names.clear();
    std::erase_if(names,
                  [](const std::string &name) { return !Contains(name, ".") || Contains(name, ".."); });
    return names;
}

std::vector<std::string> ReadFolderListFromFolder(const std::string &folder) {
    std::vector<std::string> names, folders;
    if (!ListFolder(folder, names)) names.clear();
    for (const std::string &name : names)
        if (!Contains(name, ".")) folders.push_back(folder + "/" + name);
    return folders;
}

void MakeFolders(const std::string &root, const std::string &path) {
    for (size_t end = path.find('/'); end != std::string::npos; end = path.find('/', end + 1))
        MakeFolder(root + path.substr(0, end));
}

bool isSafeFileName(std::string_view name) {
    const bool hasForbidden = name.find_first_of(std::string_view("/\\:\0", 4)) != std::string_view::npos;
    return !name.empty() && name != "." && name != ".." && !hasForbidden;
}
