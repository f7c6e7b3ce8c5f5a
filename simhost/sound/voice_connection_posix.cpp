#include "simhost/sound/voice_connection.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace simhost {

namespace {

constexpr const char *HostVariable = "FENNIC_VOICE_HOST", *SocketName = "voice.socket";
constexpr int LookMilliseconds = 20; // for somebody who comes

int listener = -1, connection = -1;
time_t limit = 0; // in seconds

void Close(int &handle) {
    if (handle >= 0) close(handle);
    handle = -1;
}

// The process that a connection comes from; 0 when nobody knows.
int PeerOf(int socket) {
    ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? peer.pid : 0;
}

bool Listen() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, SocketName); // a whole path may be longer than a socket's may be
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return listener >= 0 && bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
           && listen(listener, 8) == 0;
}

Passed Failed(ssize_t count) {
    return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK) ? Passed::Late : Passed::Gone;
}

} // namespace

bool ListenForVoice(double limitSeconds, std::string &error) {
    limit = static_cast<time_t>(limitSeconds) + 1;
    if (Listen() && setenv(HostVariable, SocketName, 1) == 0) return true;
    error = std::strerror(errno);
    return false;
}

bool isListeningForVoice() {
    return listener >= 0;
}

void StopListening() {
    HangUp();
    Close(listener);
    unsetenv(HostVariable);
}

bool AcceptVoice(int process) {
    pollfd waiting = {listener, POLLIN, 0};
    while (connection < 0 && poll(&waiting, 1, LookMilliseconds) > 0) {
        int come = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (come < 0) return false;
        if (PeerOf(come) == process)
            connection = come;
        else
            Close(come);
    }
    if (connection < 0) return false;
    timeval time = {};
    time.tv_sec = limit;
    setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
    setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
    return true;
}

bool isVoiceConnected() {
    return connection >= 0;
}

void HangUp() {
    Close(connection);
}

Passed SendToVoice(const void *bytes, std::size_t size) {
    const char *next = static_cast<const char *>(bytes);
    while (size > 0) {
        const ssize_t count = send(connection, next, size, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return Failed(count);
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return Passed::Whole;
}

Passed ReceiveFromVoice(void *bytes, std::size_t size) {
    char *next = static_cast<char *>(bytes);
    while (size > 0) {
        const ssize_t count = recv(connection, next, size, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return Failed(count);
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return Passed::Whole;
}

bool hasEnded(int process) {
    siginfo_t info = {};
    if (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0) return true;
    return info.si_pid == process;
}

} // namespace simhost
