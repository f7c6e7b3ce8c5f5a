// File names are UTF-8 everywhere, since the program's manifest says so (fennic-voice.manifest).
#include "speech/voice/system.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <io.h>

#include <windows.h>

#include <audioclient.h>

namespace fennic_voice {

namespace {

const UINT consoleLetters = GetConsoleOutputCP(); // of the console that we write to; 0: there is none

} // namespace

const bool SystemSpeaks = false;
const unsigned long FramesPerBuffer = 0;

void PrepareStreams() {
    for (FILE *stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    if (consoleLetters == 0 || consoleLetters == CP_UTF8 || !SetConsoleOutputCP(CP_UTF8)) return;
    std::atexit([] { SetConsoleOutputCP(consoleLetters); });
}

std::string ProgramFile() {
    wchar_t path[32768] = L"";
    const DWORD size = GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    return std::filesystem::path(path, path + size).string();
}

std::string MakeTemporaryWav() {
    wchar_t path[MAX_PATH + 1] = L"", file[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH, path);
    if (GetTempFileNameW(path, L"fen", 0, file) == 0) return {};
    const std::filesystem::path wav = std::filesystem::path(file).replace_extension(".wav");
    std::error_code error;
    std::filesystem::rename(file, wav, error);
    return error ? "" : wav.string();
}

std::string QuotedForCommand(const std::string &path) {
    return "\"" + path + "\"";
}

std::string DescribeSoundError(long number) {
    switch (static_cast<HRESULT>(number)) {
    case E_ACCESSDENIED:
        return "Windows does not let programs use it; in its settings, under Privacy and Microphone, let desktop "
               "apps access the microphone";
    case AUDCLNT_E_DEVICE_IN_USE:
    case AUDCLNT_E_EXCLUSIVE_MODE_ONLY: return "another program has it to itself";
    case AUDCLNT_E_SERVICE_NOT_RUNNING: return "the system's service Windows Audio does not run";
    default: return "";
    }
}

// The libraries of this system write nothing.
Hush::Hush() = default;
Hush::~Hush() = default;

} // namespace fennic_voice
