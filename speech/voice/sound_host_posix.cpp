// Sound from and to a host in lockstep: the headless simulator gives the blocks of a frame when the frame is
// over. Whoever closes our input in the middle of one waits for our end and can give none, so that is
// noticed, too.
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "speech/voice/sound.h"

namespace fennic_voice {

namespace {

const uint32_t LongestBlock = SampleRate * 10;

class HostSound : public Sound {
public:
    explicit HostSound(int handle) : handle(handle) {}
    ~HostSound() override { close(handle); }

    bool Read(Samples &block) override {
        uint32_t count = 0;
        block.clear();
        if (!WaitForBlock()) return true;
        if (!Receive(&count, sizeof count) || count > LongestBlock) return false;
        block.resize(count);
        return Receive(block.data(), count * sizeof(int16_t));
    }

    void Write(const Samples &block) override {
        const char *next = reinterpret_cast<const char *>(block.data());
        for (size_t left = block.size() * sizeof(int16_t); left > 0;) {
            const ssize_t count = send(handle, next, left, 0);
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return; // the next Read will tell
            next += count;
            left -= static_cast<size_t>(count);
        }
    }

    bool isWaiting() const override { return true; }

private:
    const int handle;

    bool isInputOpen = true; // as far as it was noticed

    // False, once, when the input has ended instead.
    bool WaitForBlock() {
        while (isInputOpen) {
            pollfd handles[] = {{handle, POLLIN, 0}, {STDIN_FILENO, 0, 0}};
            if (poll(handles, 2, -1) < 0 && errno == EINTR) continue;
            // Also before a block that has come meanwhile, so that a host sees one end alone.
            isInputOpen = handles[1].revents == 0;
            if (!isInputOpen) return false;
            if (handles[0].revents != 0) return true;
        }
        return true;
    }

    bool Receive(void *target, size_t size) {
        char *next = static_cast<char *>(target);
        while (size > 0) {
            const ssize_t count = recv(handle, next, size, 0);
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            next += count;
            size -= static_cast<size_t>(count);
        }
        return true;
    }
};

} // namespace

std::unique_ptr<Sound> ConnectToHost(const std::string &socketPath, std::string &error) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) {
        error = "the name of the socket is too long";
        return nullptr;
    }
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size());
    const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
    if (handle >= 0) fcntl(handle, F_SETFD, FD_CLOEXEC);
    if (handle >= 0 && connect(handle, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return std::make_unique<HostSound>(handle);
    error = std::strerror(errno);
    if (handle >= 0) close(handle);
    return nullptr;
}

} // namespace fennic_voice
