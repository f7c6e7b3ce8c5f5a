// Replacing one file: which file a path finally names, whether it may be replaced, and how. Behind
// WriteWholeFile, copyFile and WriteFileSet alone.
#pragma once

#include <set>
#include <string>

#include "util/file_calls.h"

extern const char *const NewFileSuffix; // of a new file, until it takes its place

// Notes that reading a file failed: it is not replaced until ResetFiles. True when that is new.
bool KeepFile(const std::string &path);

// The folder of a file, with "/" at its end; "./" for a bare name.
std::string FolderOf(const std::string &path);

// The file that a path finally names, so that a link stays and its target is replaced. A reason why it must
// not be replaced: it could not be read in this session, a link leads nowhere or out of the aircraft's and
// the plug-in's own folders, something else than a file is there, or the permissions do not allow it.
Reason FindTarget(const std::string &path, std::string &target);

// Fills a new file with all bytes of another one. unread is why that could not be read; it is then kept, too.
Fill CopyOf(const std::string &from, Reason &unread);

// Writes a new file beside the target and renames it over it.
Reason ReplaceFile(const std::string &path, const Fill &fill);

// Makes last, through a loss of power, what was renamed or removed among these files, in whatever folders.
void SyncFoldersOf(const std::set<std::string> &files);
