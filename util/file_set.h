// Files of one folder that belong together and are replaced together.
#pragma once

#include <string>
#include <vector>

struct FileOfSet {
    std::string path; // all in the same folder
    std::string content;
};

// Replaces all the files or none: each is written beside its target, then a journal that names them all, then
// they are renamed, in the order given; when one cannot be renamed the old ones come back. A file that holds
// its content already is not touched, a folder that is missing is made. False, with one line in the log and
// the path in failed, when a file could not be replaced. What an end of the program in between leaves, at any
// point, FinishFileSet makes whole.
bool WriteFileSet(const std::vector<FileOfSet> &files, std::string &failed);

// Completes a set whose journal had been written and undoes any other; removes what lies beside the files of
// the folder, "….fennic-set", "….fennic-old", "….fennic-new" and "_set.fennic-journal". One line in the log
// when there was something to do. False, with one line in the log, when that fails: the files are then not
// all old or all new, and must not be taken for the truth.
bool FinishFileSet(const std::string &folder);
