// The companion's process on Windows: lines both ways without waiting, and no process left behind. A program
// of its own, which is the helper, too, when it is started with "--child"; FENNIC_HELPER says what it does
// then.
#include "speech/companion/helper_process.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <iostream>

#include <windows.h>

using fennic_speech::HelperProcess;

namespace {

int failures = 0;
std::string program; // UTF-8

void Expect(bool isSo, const char *what, const std::string &found = "") {
    if (isSo) return;
    std::printf("not so: %s %s\n", what, found.c_str());
    failures++;
}

void Start(HelperProcess &process, const char *does) {
    std::string error;
    SetEnvironmentVariableA("FENNIC_HELPER", does);
    Expect(process.Start(program, error), "started", error);
}

// Frames until it is so; the limit is against hanging alone.
template <typename Condition> bool Until(HelperProcess &process, const Condition &isSo) {
    for (int frame = 0; frame < 30000; frame++) {
        process.Exchange();
        if (isSo()) return true;
        Sleep(1);
    }
    return false;
}

std::string NextLine(HelperProcess &process) {
    std::string line;
    return Until(process, [&] { return process.TakeLine(line); }) ? line : "nothing";
}

void LinesGoBothWaysAndItsEndIsNoticed() {
    HelperProcess process;
    Start(process, "echo");
    Expect(process.Send("say>Gear up."), "sent");
    std::string line = NextLine(process);
    Expect(line == "<say>Gear up.>", "came back", line);
    Expect(Until(process, [&] { return process.TakeLogLine(line); }) && line == "log", "its error output",
           line);
    process.Send("die");
    Expect(Until(process, [&] { return !process.isRunning(); }), "its end is noticed");
    Expect(process.Ending() == "with status 7", "how it ended", process.Ending());
    Expect(!process.Send("say>Nobody hears."), "nothing is sent to nobody");
}

void LeavesWithoutAWait() {
    HelperProcess process;
    Start(process, "echo");
    process.Send("say>Bye.");
    process.Leave();
    for (const char *line : {"<say>Bye.>", "<exit>>", "end"}) {
        const std::string found = NextLine(process);
        Expect(found == line, line, found);
    }
    Expect(Until(process, [&] { return !process.isRunning(); }) && process.Ending() == "with status 0",
           "it left", process.Ending());
}

void OneThatReadsNothingCostsLinesAndNoTime() {
    HelperProcess process;
    Start(process, "sleep");
    bool isFull = false;
    for (int i = 0; i < 10000 && !isFull; i++) {
        isFull = !process.Send(std::string(1000, 'x'));
        process.Exchange();
    }
    Expect(isFull, "what nobody reads is dropped");
    process.End();
    Expect(process.Ending() == "killed", "ended after half a second", process.Ending());
}

void AFloodTakesItsTurn() {
    HelperProcess process;
    Start(process, "flood");
    std::string line = NextLine(process);
    Expect(line == "123456789", "it has begun", line);
    while (process.TakeLine(line)) continue;
    int most = 0;
    for (int frame = 0; frame < 200; frame++) {
        process.Exchange();
        int lines = 0;
        while (process.TakeLine(line)) lines++;
        most = std::max(most, lines);
    }
    Expect(most <= 64 * 1024 / 10 + 1, "a frame's share", std::to_string(most));
    process.Kill();
    Expect(process.Ending() == "killed", "killed", process.Ending());
}

// The simulator's process ends without a word.
void TheVoiceDoesNotOutliveItsCompanion() {
    HelperProcess simulator;
    Start(simulator, "simulator");
    const DWORD number = std::strtoul(NextLine(simulator).c_str(), nullptr, 10);
    const HANDLE voice = OpenProcess(SYNCHRONIZE, FALSE, number);
    const HANDLE killed = OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(simulator.Id()));
    Expect(voice && WaitForSingleObject(voice, 0) == WAIT_TIMEOUT, "it runs", std::to_string(number));
    TerminateProcess(killed, 1);
    Expect(voice && WaitForSingleObject(voice, 30000) == WAIT_OBJECT_0, "it has ended with its companion");
}

void OneThatIsMissingIsTold() {
    HelperProcess process;
    std::string error;
    Expect(!process.Start(program + ".missing", error) && !error.empty() && !process.isRunning(), "missing",
           error);
}

int Help(const std::string &does) {
    for (FILE *stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    if (does == "flood")
        while (std::puts("123456789") >= 0) continue;
    if (does == "simulator") {
        HelperProcess voice;
        Start(voice, "sleep");
        std::printf("%d\n", voice.Id());
        std::fflush(stdout);
        Sleep(INFINITE);
    }
    if (does == "sleep") Sleep(INFINITE);
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "die") return 7;
        std::cout << "<" << line << ">" << std::endl;
        std::cerr << "log\n";
    }
    std::cout << "end" << std::endl;
    return 0;
}

} // namespace

int main(int count, char **words) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::filesystem::path folder = std::filesystem::temp_directory_path()
                                         / (L"Fennic Änderung " + std::to_wstring(GetCurrentProcessId()));
    const bool isHelper = count > 1 && std::strcmp(words[1], "--child") == 0;
    const std::filesystem::path copy = isHelper ? std::filesystem::path(path) : folder / "helper.exe";
    const std::u8string name = copy.u8string();
    program.assign(name.begin(), name.end());
    if (isHelper) return Help(std::getenv("FENNIC_HELPER"));

    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(path, copy);
    LinesGoBothWaysAndItsEndIsNoticed();
    LeavesWithoutAWait();
    OneThatReadsNothingCostsLinesAndNoTime();
    AFloodTakesItsTurn();
    TheVoiceDoesNotOutliveItsCompanion();
    OneThatIsMissingIsTold();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    std::printf("%d failures\n", failures);
    return failures == 0 ? 0 : 1;
}
