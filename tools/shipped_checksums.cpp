// Prints checksum and name of each file, as the list of versions has them: files below a folder by their
// paths in it. "./fennic versions" adds those of this version to cmake/shipped_versions.txt.
//   shipped_checksums FOLDER...
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "util/checksum.h"

namespace fs = std::filesystem;

int main(int count, char **words) {
    for (int i = 1; i < count; i++) {
        std::vector<fs::path> files;
        for (const auto &entry : fs::recursive_directory_iterator(words[i]))
            if (entry.is_regular_file()) files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const fs::path &file : files) {
            std::ifstream stream(file, std::ios::binary);
            const std::string text(std::istreambuf_iterator<char>(stream), {});
            const fs::path path = fs::relative(file, words[i]);
            std::printf("%s\t%s\t%s\n", TextChecksum(text).c_str(),
                        path.parent_path().generic_string().c_str(), path.filename().string().c_str());
        }
    }
    return 0;
}
