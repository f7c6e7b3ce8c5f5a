// popen with the one precaution it needs inside somebody else's process: a program that ends before it has
// read everything must not end the simulator.
#include "util/pipes.h"

#include <csignal>
#include <cstdio>

std::string ReadFromCommand(const char *command) {
    std::string text;
    FILE *pipe = popen(command, "r");
    if (!pipe) return text;
    char piece[1024];
    while (std::fgets(piece, sizeof piece, pipe)) text += piece;
    pclose(pipe);
    return text;
}

void WriteToCommand(const char *command, const std::string &text) {
    struct sigaction ignore = {};
    struct sigaction before = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &before);
    if (FILE *pipe = popen(command, "w")) {
        std::fwrite(text.data(), 1, text.size(), pipe);
        pclose(pipe);
    }
    sigaction(SIGPIPE, &before, nullptr);
}
