// A process that ends is noticed by its socket, which may close before the process is gone. Whoever started
// it asks for it in the next frame, so it is waited for; asking leaves it to be asked for again.
#include "simhost/sound/voice_host.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "simhost/number_text.h"

namespace simhost {

namespace {

using std::chrono::steady_clock;

constexpr const char *HostVariable = "FENNIC_VOICE_HOST", *SocketName = "voice.socket";
constexpr int LookMilliseconds = 20; // between two looks whether a process lives

struct VoiceHost {
    int listener = -1, connection = -1;
    int process = 0;   // at the other end of the connection
    int abandoned = 0; // one that did not come or did not answer
    double limitSeconds = 60;
    std::string problem;
};
VoiceHost host;

void Close(int &handle) {
    if (handle >= 0) close(handle);
    handle = -1;
}

bool hasEnded(int process) {
    siginfo_t info = {};
    if (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0) return true;
    return info.si_pid == process;
}

steady_clock::time_point Deadline() {
    return steady_clock::now()
           + std::chrono::duration_cast<steady_clock::duration>(
               std::chrono::duration<double>(host.limitSeconds));
}

void Abandon(int process, const char *what) {
    host.problem = std::string("the voice ") + what + " within " + NumberText(host.limitSeconds)
                   + " s; the flight goes on without its sound";
    host.abandoned = process;
    Close(host.connection);
}

// The process that a connection comes from; 0 when nobody knows.
int PeerOf(int connection) {
    ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? peer.pid : 0;
}

// Takes the connections that have come, and keeps the one from the process.
bool Accept(int process) {
    pollfd waiting = {host.listener, POLLIN, 0};
    while (host.connection < 0 && poll(&waiting, 1, LookMilliseconds) > 0) {
        int connection = accept4(host.listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0) return false;
        if (PeerOf(connection) == process)
            host.connection = connection;
        else
            Close(connection);
    }
    if (host.connection < 0) return false;
    timeval limit = {};
    limit.tv_sec = static_cast<time_t>(host.limitSeconds) + 1;
    setsockopt(host.connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    setsockopt(host.connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    host.process = process;
    return true;
}

bool Send(const void *bytes, std::size_t size) {
    const char *next = static_cast<const char *>(bytes);
    while (size > 0) {
        const ssize_t count = send(host.connection, next, size, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool Receive(void *bytes, std::size_t size) {
    char *next = static_cast<char *>(bytes);
    while (size > 0) {
        const ssize_t count = recv(host.connection, next, size, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count == 0) errno = ECONNRESET;
        if (count <= 0) return false;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool Listen() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, SocketName); // a whole path may be longer than a socket's may be
    host.listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return host.listener >= 0
           && bind(host.listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
           && listen(host.listener, 8) == 0;
}

} // namespace

bool OpenVoiceHost(double limitSeconds, std::string &error) {
    host.limitSeconds = limitSeconds;
    if (Listen() && setenv(HostVariable, SocketName, 1) == 0) return true;
    error = std::strerror(errno);
    CloseVoiceHost();
    return false;
}

void CloseVoiceHost() {
    Close(host.connection);
    Close(host.listener);
    host = VoiceHost();
    unsetenv(HostVariable);
}

void AwaitVoice(int process) {
    if (host.listener < 0 || process == host.process) return;
    Close(host.connection);
    host.process = 0;
    if (process <= 0 || process == host.abandoned) return;
    const steady_clock::time_point deadline = Deadline();
    while (!Accept(process)) {
        if (hasEnded(process)) return;
        if (steady_clock::now() > deadline) return Abandon(process, "did not come for its sound");
    }
}

bool isVoiceConnected() {
    return host.connection >= 0;
}

void ExchangeSound(const SoundBlock &microphone, SoundBlock &loudspeaker) {
    loudspeaker.fill(0);
    if (!isVoiceConnected()) return;
    const auto count = static_cast<std::uint32_t>(microphone.size());
    const std::size_t bytes = microphone.size() * sizeof microphone[0];
    if (Send(&count, sizeof count) && Send(microphone.data(), bytes) && Receive(loudspeaker.data(), bytes))
        return;
    const bool isLate = errno == EAGAIN || errno == EWOULDBLOCK;
    loudspeaker.fill(0);
    if (isLate) return Abandon(host.process, "did not answer");
    Close(host.connection);
    const steady_clock::time_point deadline = Deadline();
    while (!hasEnded(host.process)) {
        if (steady_clock::now() > deadline) return Abandon(host.process, "hung up and did not end");
        poll(nullptr, 0, 1);
    }
}

std::string TakeVoiceProblem() {
    return std::exchange(host.problem, {});
}

} // namespace simhost
