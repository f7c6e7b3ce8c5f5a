// What is the same on every system: lines, and the order in which a process comes and goes.
#include "speech/companion/helper_process.h"

#include <utility>

#include "voice/link_words.h"

namespace fennic_speech {

namespace {

const size_t LongestLine = 100000;
const size_t LongestWaiting = size_t{256} * 1024;

} // namespace

void LineBuffer::Add(const char *bytes, size_t count) {
    text.erase(0, std::exchange(taken, 0));
    text.append(bytes, count);
    const size_t last = text.rfind('\n');
    const size_t begun = last == std::string::npos ? 0 : last + 1;
    if (text.size() - begun > LongestLine) text.resize(begun + LongestLine);
}

bool LineBuffer::Take(std::string &line) {
    const size_t end = text.find('\n', taken);
    if (end == std::string::npos) return false;
    line.assign(text, taken, end - taken);
    taken = end + 1;
    return true;
}

void LineBuffer::Clear() {
    text.clear();
    taken = 0;
}

bool HelperProcess::Start(const std::string &program, std::string &error) {
    if (isRunning()) End();
    waiting.clear();
    output.Clear();
    errors.Clear();
    if (StartProgram(program, error)) return true;
    CloseHandles();
    return false;
}

bool HelperProcess::Send(const std::string &line) {
    if (inputHandle < 0 || waiting.size() + line.size() > LongestWaiting) return false;
    waiting += line;
    waiting += '\n';
    return true;
}

void HelperProcess::Exchange() {
    if (!isRunning()) return;
    Write();
    Read();
    if (outputHandle < 0) Reap(false);
}

void HelperProcess::Leave() {
    Send(link_words::Exit);
    Write();
    CloseInput();
}

void HelperProcess::End() {
    if (!isRunning()) return;
    Leave();
    Reap(true);
}

void HelperProcess::Kill() {
    if (isRunning()) Reap(false);
}

} // namespace fennic_speech
