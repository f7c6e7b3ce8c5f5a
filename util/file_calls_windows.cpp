// Files through the calls of Windows. A name becomes one of the form "\\?\C:\…", which may be longer than 260
// characters, and means a file whatever device is called so. Others may rename or remove what is open here;
// those who do not let us, such as virus scanners, hold a file for some milliseconds after it was written, so
// a call that they refuse is made again, for an eighth of a second at most.
#include "util/file_calls.h"

#include <algorithm>

#include <windows.h>

#include "util/numbers.h"
#include "util/wide_text_windows.h"

namespace {

const DWORD PieceSize = 65536;
const DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
const wchar_t *const LongName = L"\\\\?\\";
const wchar_t *const LongNetworkName = L"\\\\?\\UNC\\";

std::wstring SystemName(const std::string &path) {
    std::wstring name = WideText(path);
    std::replace(name.begin(), name.end(), L'/', L'\\');
    if (name.starts_with(LongName)) return name;
    if (name.starts_with(L"\\\\")) return LongNetworkName + name.substr(2);
    const bool isAbsolute = name.size() > 2 && name[1] == L':';
    for (size_t twice = 0; isAbsolute && (twice = name.find(L"\\\\")) != std::wstring::npos;)
        name.erase(twice, 1);
    return isAbsolute ? LongName + name : name;
}

std::string PlainName(std::wstring name) {
    for (const auto &[begin, instead] : {std::pair(LongNetworkName, L"\\\\"), std::pair(LongName, L"")})
        if (name.starts_with(begin)) name = instead + name.substr(std::wstring(begin).size());
    std::replace(name.begin(), name.end(), L'\\', L'/');
    return NarrowText(name);
}

Reason LastError() {
    const DWORD error = GetLastError();
    wchar_t text[512] = L"";
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                                  0, text, std::size(text), nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) length--;
    return length > 0 ? NarrowText({text, length}) : "error " + int2string(static_cast<int>(error));
}

bool isAbsence(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_FILENAME_EXCED_RANGE: return true;
    default: return false;
    }
}

bool isHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

// Somebody holds the file, or it is one that goes when somebody closes it.
bool isHeldOrGoing(DWORD error) {
    return isHeld(error) || error == ERROR_ACCESS_DENIED;
}

// Makes a call until it succeeds or fails for another reason than isPassing knows.
template <typename Call> bool Insist(bool (*isPassing)(DWORD error), const Call &call) {
    for (DWORD milliseconds = 1; !call(); milliseconds *= 2) {
        const DWORD error = GetLastError();
        if (milliseconds > 64 || !isPassing(error)) {
            SetLastError(error);
            return false;
        }
        Sleep(milliseconds);
    }
    return true;
}

class FileHandle {
public:
    FileHandle(const std::string &path, DWORD access, DWORD creation, DWORD flags,
               bool (*isPassing)(DWORD error) = isHeld) {
        const std::wstring name = SystemName(path);
        Insist(isPassing, [&] {
            file = CreateFileW(name.c_str(), access, ShareAll, nullptr, creation, flags, nullptr);
            return IsOpen();
        });
    }
    ~FileHandle() { Close(); }
    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;

    bool IsOpen() const { return file != INVALID_HANDLE_VALUE; }
    operator HANDLE() const { return file; }
    bool Close() {
        const bool isClosed = !IsOpen() || CloseHandle(file);
        file = INVALID_HANDLE_VALUE;
        return isClosed;
    }

private:
    HANDLE file = INVALID_HANDLE_VALUE;
};

bool Remove(const std::string &path) {
    const std::wstring name = SystemName(path);
    return Insist(isHeld, [&] { return DeleteFileW(name.c_str()) != 0; });
}

// With the flag, folders can be opened, too, and told from files.
class FileToRead : public FileHandle {
public:
    explicit FileToRead(const std::string &path)
        : FileHandle(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS) {}
};

Reading Examine(const FileHandle &file, uint64_t &size, Reason &reason) {
    if (!file.IsOpen() && isAbsence(GetLastError())) return Reading::Absent;
    BY_HANDLE_FILE_INFORMATION status = {};
    if (!file.IsOpen()) {
        reason = LastError();
    } else if (GetFileType(file) != FILE_TYPE_DISK) {
        reason = "it is no regular file";
    } else if (!GetFileInformationByHandle(file, &status)) {
        reason = LastError();
    } else if (status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
        reason = "it is no regular file";
    }
    size = (uint64_t{status.nFileSizeHigh} << 32) + status.nFileSizeLow;
    return reason.empty() ? Reading::Read : Reading::Failed;
}

Reason WriteAll(HANDLE file, std::string_view piece) {
    while (!piece.empty()) {
        const DWORD wanted = static_cast<DWORD>(std::min<size_t>(piece.size(), 1 << 20));
        DWORD count = 0;
        if (!WriteFile(file, piece.data(), wanted, &count, nullptr)) return LastError();
        if (count == 0) return "nothing was written";
        piece.remove_prefix(count);
    }
    return "";
}

std::string AtMost(uint64_t limit) {
    return "it is larger than " + int2string(static_cast<int>(limit >> 20)) + " MB";
}

} // namespace

Reading ProbeFile(const std::string &path, Reason &reason) {
    const FileToRead file(path);
    uint64_t size = 0;
    return Examine(file, size, reason);
}

Reading ReadPieces(const std::string &path, uint64_t limit, const TakePiece &take, Reason &reason) {
    const FileToRead file(path);
    uint64_t size = 0;
    if (const Reading found = Examine(file, size, reason); found != Reading::Read) return found;
    if (size > limit) reason = AtMost(limit);
    std::string buffer(PieceSize, '\0');
    uint64_t total = 0;
    while (reason.empty()) {
        DWORD count = 0;
        if (!ReadFile(file, buffer.data(), PieceSize, &count, nullptr)) reason = LastError();
        if (count == 0) break;
        total += count;
        if (total > limit)
            reason = AtMost(limit);
        else if (!take(std::string_view(buffer.data(), count)))
            return Reading::Failed;
    }
    if (reason.empty() && Examine(file, size, reason) == Reading::Read && size != total)
        reason = "its length changed while it was read";
    return reason.empty() ? Reading::Read : Reading::Failed;
}

Presence WhatIsBehind(const std::string &path) {
    const FileHandle file(path, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    uint64_t size = 0;
    Reason reason;
    switch (Examine(file, size, reason)) {
    case Reading::Absent: return Presence::Absent;
    case Reading::Read: return Presence::Present;
    default: return Presence::Unknown;
    }
}

bool isLinkAt(const std::string &path) {
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW(SystemName(path).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
           && (entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK
               || entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

std::string ResolvedPath(const std::string &path) {
    const FileHandle file(path, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file.IsOpen()) return "";
    const DWORD size = GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring name(size, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file, name.data(), size, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= size) return "";
    name.resize(length);
    return PlainName(std::move(name));
}

// Rights are inherited from the folder. Of what they can be for one file, a plug-in's user sets none but
// "read-only", and such a file is not replaced.
Reason WriteNewFile(const std::string &path, const std::string &, const Fill &fill) {
    const bool wasThere = Remove(path);
    FileHandle file(path, GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                    wasThere ? isHeldOrGoing : isHeld);
    if (!file.IsOpen()) return LastError();
    Reason reason = fill([&file](std::string_view piece) { return WriteAll(file, piece); });
    if (reason.empty() && !FlushFileBuffers(file)) reason = LastError();
    if (!file.Close() && reason.empty()) reason = LastError();
    if (!reason.empty()) Remove(path);
    return reason;
}

Reason MayBeReplaced(const std::string &path) {
    const DWORD attributes = GetFileAttributesW(SystemName(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return isAbsence(GetLastError()) ? "" : LastError();
    return attributes & FILE_ATTRIBUTE_READONLY ? "it is read-only" : "";
}

Reason MoveOver(const std::string &from, const std::string &to) {
    const std::wstring name = SystemName(from), newName = SystemName(to);
    const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const auto move = [&] { return MoveFileExW(name.c_str(), newName.c_str(), how) != 0; };
    return Insist(isHeldOrGoing, move) ? "" : LastError();
}

bool GiveSecondName(const std::string &path, const std::string &second) {
    return CreateHardLinkW(SystemName(second).c_str(), SystemName(path).c_str(), nullptr);
}

bool RemoveFile(const std::string &path) {
    return Remove(path) || isAbsence(GetLastError());
}

// What is renamed here is on disk when the call returns; the file system keeps a journal of the rest.
void SyncFolder(const std::string &) {}

void MakeFolder(const std::string &folder) {
    CreateDirectoryW(SystemName(folder).c_str(), nullptr);
}

bool ListFolder(const std::string &folder, std::vector<std::string> &names) {
    WIN32_FIND_DATAW entry = {};
    std::wstring all = SystemName(folder);
    all += all.ends_with(L'\\') ? L"*" : L"\\*";
    const HANDLE search = FindFirstFileW(all.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return false;
    do {
        names.push_back(NarrowText(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    const bool isComplete = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    std::sort(names.begin(), names.end());
    return isComplete;
}
