// Made models and a plug-in's folder for them, so that a benchmark loads its model the way users do.
#pragma once

#include <string>

// A plug-in's folder in a temporary place, removed at the end, with this program acting as the plug-in.
class BenchFolder {
public:
    std::string plugin; // ends in "/"

    BenchFolder();
    ~BenchFolder();
    BenchFolder(const BenchFolder &) = delete;
    BenchFolder &operator=(const BenchFolder &) = delete;

    void Write(const std::string &path, const std::string &text) const;

private:
    std::string root;
};

// The systems file of a model with that many parameters, the same at every call. Each has two logic blocks
// of two comparisons and a calculation of three elements, over links to other parameters; one in ten has a
// dataref in or out, which is published as "bench/<n>"; one in fifty is a step of a sequence that waits for
// its spoken command.
std::string MadeModel(int parameters);
