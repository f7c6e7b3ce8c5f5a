// The plug-in's lines in the simulator's log. A message is printed only at level 1.
//
// Of each kind at most 20 lines are written in a second; behind it one says how many were left out. The kind
// is the text a; of a line of a file it is the file, so that every bad file is named.
//
// What is wrong is told by records, never by the words of a line: the log's line is made from the record, and
// whoever else wants to know of it takes the record itself.
#pragma once

#include <functional>
#include <string>
#include <string_view>

// An error does not do what it says; a warning is very likely not meant; a note may be just right.
enum class Severity { Error, Warning, Note };

// What is wrong with a file, with one of its lines, or in what runs.
struct LogRecord {
    Severity severity = Severity::Error;
    std::string file = {}; // a path, or relative to the plug-in's folder; empty: of no file
    int line = 0;          // from 1; 0: the whole file
    std::string reason = {};
    std::string text = {}; // of a line that was dropped: the line
    // There is nothing wrong with the line but its place: what it needs is not before it.
    bool isMisplaced = false;
    // The log says so. Else only whoever checks the files wants to know.
    bool isLogged = true;
};

// Writes the record's line, and gives it to everybody who listens.
void Report(const LogRecord &record);

// What is said of a record, beside its place.
std::string WordsOf(const LogRecord &record);

// Listens to all records, in their order, until ResetLog. The text is the log's line without what stands at
// the start of each; empty when the log does not have it.
using LogListener = std::function<void(const LogRecord &record, const std::string &text)>;
void ListenToLog(LogListener listener);

// "KV FENNIC Plugin: " + whole seconds of flight time + " SEC TFT " + a + b.
void string2debugString(const std::string &a, const std::string &b, int level);

// "KV FENNIC Plugin: " + a + the number.
void int2debugString(const std::string &a, int n, int level);
void float2debugString(const std::string &a, double x, int level);

// "PASS - " + n, whatever the level: a trace aid.
void Pass(int n);

// As string2debugString, for what went wrong: an error of no file.
void LogProblem(const std::string &a, const std::string &b);

// The same with a file: what + path, and ": " + reason when there is one. Each file's lines are a kind of
// their own, so that none stays unnamed.
void LogFileProblem(const std::string &what, const std::string &path, const std::string &reason = "");

// As string2debugString, a line of a list that the user asked for: never left out.
void LogListed(const std::string &a, const std::string &b);

// Reports that a line of a file was dropped, and why: "<file> line <line>: <reason> - line dropped: <text>".
void LogDroppedLine(std::string_view file, int line, std::string_view reason, std::string_view text);

// The reason for LogDroppedLine when a field should hold a number and does not.
std::string NoNumber(std::string_view field, std::string_view value);

// Once a frame: tells what was left out in a second that is over.
void ReportLeftOutLines();

// When the plug-in stops: tells what was left out.
void EndLog();

// Counts anew, and nobody listens any more.
void ResetLog();
