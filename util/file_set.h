// Files that belong together and are replaced together.
#pragma once

#include <string>
#include <vector>

struct FileOfSet {
    std::string path;
    std::string content;
};

// Replaces all the files or none: each is written beside its target, and when all are written they are
// renamed, in the order given; when one cannot be renamed the old ones come back. A file that holds its
// content already is not touched, a folder that is missing is made. False, with one line in the log and the
// path in failed, when a file could not be replaced. A loss of power between two renames leaves whole files,
// old and new ones.
bool WriteFileSet(const std::vector<FileOfSet> &files, std::string &failed);
