// A folder of a test's own, empty at first and gone after it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

struct ScratchFolder {
    std::string path; // ends in "/"

    ScratchFolder() {
        path = std::filesystem::temp_directory_path() / "fennic-test-XXXXXX";
        if (!mkdtemp(path.data())) throw std::runtime_error("cannot make " + path);
        path += "/";
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;
};
