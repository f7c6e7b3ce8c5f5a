// Lines from the standard input and to the standard output.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace fennic_voice {

class LineInput {
public:
    LineInput(); // begins to read

    // The lines that have come and were not taken yet, without waiting. What is not text is passed on as it
    // is; a line of more than 100,000 characters is cut.
    std::vector<std::string> Take();

    bool isAtEnd() const { return hasEnded; } // nobody writes any more

private:
    std::string rest; // of a line that is not whole yet
    bool hasEnded = false;

    void Cut(const char *bytes, size_t count, std::vector<std::string> &lines);
    void CutEnd(std::vector<std::string> &lines);
};

// Passes over the mark that some editors put in front of UTF-8, where a file begins with it.
void PassMark(std::istream &file);

// Writes a line at once. False when nobody reads any more.
bool WriteLine(const std::string &line);

// A line for the log, to the standard error.
void TellLog(const std::string &line);

} // namespace fennic_voice
