// Reading, writing, copying and listing files. Nothing throws: readers say whether they could read and log
// one line; writers leave the old file or the new one, never half of one.
//
// A file that could not be read is not an empty file. What failed to be read is remembered until
// ResetFiles, and every writer refuses to replace it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/reading.h"

// One line of a text file with its number, counted from 1, for messages.
struct FileLine {
    int number = 0;
    std::string text; // without line ends
};

// 1 when the path is a regular file that can be opened for reading, else 0. Never waits, whatever is there.
int isFileExistString(const std::string &path);
int isFileExistChar(const char *path);

// The non-empty lines of a file, carriage returns removed. Nothing in the log when there is no file, one line
// when it could not be read; no lines then.
Reading ReadLines(const std::string &path, std::vector<FileLine> &lines, uint64_t limit = SmallFile);

// The same with a line in the log when there is no file, too.
std::vector<FileLine> ReadFileLines(const std::string &path, uint64_t limit = SmallFile);
std::vector<std::string> ReadFileToVector(const std::string &path);

// The whole file; empty, with one line in the log, when it cannot be read.
std::string ReadFileToString(const std::string &path, uint64_t limit = AircraftFile);

// The whole file, byte for byte. Nothing in the log when there is no file, one line when it could not be
// read; content is empty then.
Reading ReadWholeFile(const std::string &path, std::string &content, uint64_t limit = SmallFile);

// Gives take every line without its "\n", one after the other, so that a file may be larger than the memory.
// False from take ends the reading, which counts as failed. Nothing in the log when there is no file.
using TakeLine = std::function<bool(std::string_view line)>;
Reading ReadEachLine(const std::string &path, uint64_t limit, const TakeLine &take);

// Whether a file is at the path, or behind the link there. Nothing in the log.
Presence WhatIsAt(const std::string &path);

// How many lines ReadLines would give, without keeping them; 0 when it would give none.
Reading CountLines(const std::string &path, int &lines, uint64_t limit = SmallFile);

// The same with a line in the log when there is no file, too.
int FileLineSize(const std::string &path);

// Puts content in the place of the file at path: written beside it, flushed, renamed over it, with the old
// file's permissions; a symbolic link stays and its target is replaced, but one that leads nowhere or out of
// the aircraft's folder is refused. False, with one line in the log and the old file untouched, when anything
// fails.
bool WriteWholeFile(const std::string &path, std::string_view content);

// The same for a file that is written in pieces. fill calls write for each, and ends, without writing on,
// when that is false; it answers whether the new file is to take its place.
using WritePiece = std::function<bool(std::string_view piece)>;
using FillFile = std::function<bool(const WritePiece &write)>;
bool WriteFileInPieces(const std::string &path, const FillFile &fill);

// Copies all bytes with the same promise. 1, logging "copyFile from: …", or 0, logging "copyFile Error:…".
int copyFile(const std::string &from, const std::string &to);

// Keeps the file at path from being replaced until ResetFiles, as if it could not be read.
void KeepUntilNextStart(const std::string &path);

// Removes what a crash in the middle of a write left beside the file at path, or, with a line in the log,
// beside any file in a folder. The next write does so too.
void RemoveUnfinished(const std::string &path);
void RemoveUnfinishedIn(const std::string &folder); // with "/" at its end

// Forgets which files could not be read. For the plug-in's start.
void ResetFiles();

// Bare names of the entries whose name contains "." and not ".."; sorted by bytes. Empty when the folder
// cannot be read.
std::vector<std::string> ReadFileListFromFolder(const std::string &folder);

// folder + "/" + name of the entries whose name contains no "."; sorted by bytes.
std::vector<std::string> ReadFolderListFromFolder(const std::string &folder);

// Makes those folders of a path below root (which ends in "/") that are missing: "a/b/c.txt" needs "a" and
// "a/b".
void MakeFolders(const std::string &root, const std::string &path);

// True when a name may become a file's name: not empty, no path separator, not "." or "..". Names that
// come from files or edit boxes are checked with this before they reach a path.
bool isSafeFileName(std::string_view name);
