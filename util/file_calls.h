// What the modules of files ask of the system, as values: no call here logs or throws, and none waits but for
// somebody who holds a file on Windows for a moment. The bodies are the system's own, in file_calls_posix.cpp
// and file_calls_windows.cpp. Only files.cpp, file_replacing.cpp and file_set.cpp include this.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/reading.h"

// Why something failed, to stand behind "Cant …: "; empty when it did not fail.
using Reason = std::string;

// Gets the next piece of a file; false ends the reading.
using TakePiece = std::function<bool(std::string_view piece)>;

// Writes the next piece of a new file, and writes all of them through the first.
using Write = std::function<Reason(std::string_view piece)>;
using Fill = std::function<Reason(const Write &write)>;

// Opens a regular file without ever waiting and closes it again.
Reading ProbeFile(const std::string &path, Reason &reason);

// Gives a regular file of at most limit bytes to take, in pieces. Failed, with the reason, for whatever else
// is at the path, for a call that fails and for a file that changes its length meanwhile; Failed without a
// reason when take ended it.
Reading ReadPieces(const std::string &path, uint64_t limit, const TakePiece &take, Reason &reason);

// What is at a path, behind links.
Presence WhatIsBehind(const std::string &path);
bool isLinkAt(const std::string &path);

// The absolute path without links of what exists; empty when it cannot be told.
std::string ResolvedPath(const std::string &path);

// Makes a file that was not there, on disk when this returns, with the permissions of the file at like where
// there is one. A file that is there already is removed first, and a link never followed; nothing is left
// after a failure.
Reason WriteNewFile(const std::string &path, const std::string &like, const Fill &fill);

// Nothing when the file at path may be replaced as far as its permissions go: it is writable, or not there.
Reason MayBeReplaced(const std::string &path);

// Renames a file over whatever file is at the other path, at no point without one of them there.
Reason MoveOver(const std::string &from, const std::string &to);

// Gives a file a second name. Many disks outside of the system's own kind know no second names.
bool GiveSecondName(const std::string &path, const std::string &second);

// Removes a file or a link. True when none is there any more.
bool RemoveFile(const std::string &path);

// Makes what was renamed or removed in a folder last through a loss of power. Some file systems cannot; the
// files are whole all the same.
void SyncFolder(const std::string &folder);

void MakeFolder(const std::string &folder);

// The names of all entries, sorted by bytes; false when they cannot be read.
bool ListFolder(const std::string &folder, std::vector<std::string> &names);
