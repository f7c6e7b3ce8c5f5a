// The voice's process as the simulator's thread sees it: lines go in, lines come out, nothing waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace fennic_speech {

// What has come from a pipe and is not a whole line yet. Keeps its memory.
class LineBuffer {
public:
    void Add(const char *bytes, size_t count);
    bool Take(std::string &line); // the next whole line; one of more than 100,000 bytes is cut
    void Clear();

private:
    std::string text;
    size_t taken = 0; // bytes of it
};

class HelperProcess {
public:
    // Starts the program; one that runs already is ended. Where its file has lost the right to be run, as
    // some unpackers have it, it gets it. False, with the reason in error, when it cannot be started.
    bool Start(const std::string &program, std::string &error);

    // Sends "exit>" and closes its input: it will end, as Exchange notices.
    void Leave();

    // Leaves it and waits, at most half a second before it is killed: returns when the process is gone.
    void End();

    // Ends it at once.
    void Kill();

    // Takes what the process wrote, 64 kB of each kind at most, and writes what waits for it. Once a frame;
    // without anything to do it costs three system calls and no memory.
    void Exchange();

    bool isRunning() const { return id > 0; }
    int Id() const { return id; } // the system's number of the process; 0 while none runs

    // A line for its input. Dropped, with false, when it was left, or reads nothing and more than 256 kB
    // wait.
    bool Send(const std::string &line);

    // The next line of its output, and of its error output.
    bool TakeLine(std::string &line) { return output.Take(line); }
    bool TakeLogLine(std::string &line) { return errors.Take(line); }

    // How it ended, for the log; after isRunning has become false.
    const std::string &Ending() const { return ending; }

private:
    using Handle = std::intptr_t; // of the system; -1: none
    static constexpr size_t MostInAFrame = size_t{64} * 1024;
    static constexpr int EndMilliseconds = 500;
    struct PendingWrite;

    int id = 0; // of the process; 0: none
    Handle inputHandle = -1, outputHandle = -1, errorHandle = -1;
    Handle process = -1, job = -1;         // where a process has handles
    std::string waiting;                   // for its input
    std::shared_ptr<PendingWrite> pending; // what the system has taken of it and not yet handed over
    LineBuffer output, errors;
    std::string ending;

    // In helper_process_posix.cpp and helper_process_windows.cpp.
    bool StartProgram(const std::string &program, std::string &error);
    void Write();
    void Read(); // closes the output when nobody writes to it any more
    void CloseInput();
    void CloseHandles();
    void Reap(bool waits); // sees the process off; one that lives on, after a wait or without, is killed
    static bool ReadSome(Handle handle,
                         LineBuffer &lines); // what there is; false when the other end is closed
};

} // namespace fennic_speech
