// Reading, writing, copying and listing files. Nothing throws: readers return an empty result and log one
// line; writers leave the old file or the new one, never half of one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// One line of a text file with its number, counted from 1, for messages.
struct FileLine {
    int number = 0;
    std::string text; // without line ends
};

// 1 when the path is a file that can be opened for reading, else 0.
int isFileExistString(const std::string &path);
int isFileExistChar(const char *path);

// The non-empty lines of a file, carriage returns removed. When it cannot be opened: empty, and one line
// in the log.
std::vector<FileLine> ReadFileLines(const std::string &path);
std::vector<std::string> ReadFileToVector(const std::string &path);

// The whole file; empty, with one line in the log, when it cannot be opened.
std::string ReadFileToString(const std::string &path);

// Whether a file is at the path. Unknown when something else is, or when the system does not say, which is
// not the same as Absent where a file must not be lost.
enum class Presence { Absent, Present, Unknown };
Presence WhatIsAt(const std::string &path);

// The number of non-empty lines.
int FileLineSize(const std::string &path);

// Puts content in the place of the file at path: written beside it, flushed, renamed over it, with the old
// file's permissions; a symbolic link stays and its target is replaced, one to nowhere is refused. False,
// with one line in the log and the old file untouched, when anything fails.
bool WriteWholeFile(const std::string &path, std::string_view content);

// Copies all bytes with the same promise. 1, logging "copyFile from: …", or 0, logging "copyFile Error:…".
int copyFile(const std::string &from, const std::string &to);

// Removes what a crash in the middle of a write left beside the file at path. The next write does so too.
void RemoveUnfinished(const std::string &path);

// Bare names of the entries whose name contains "." and not ".."; sorted by bytes. Empty when the folder
// cannot be read.
std::vector<std::string> ReadFileListFromFolder(const std::string &folder);

// folder + "/" + name of the entries whose name contains no "."; sorted by bytes.
std::vector<std::string> ReadFolderListFromFolder(const std::string &folder);

// True when a name may become a file's name: not empty, no path separator, not "." or "..". Names that
// come from files or edit boxes are checked with this before they reach a path.
bool isSafeFileName(std::string_view name);
