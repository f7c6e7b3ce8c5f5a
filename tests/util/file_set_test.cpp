// What an interrupted set of files left is made whole at the next start. The interruptions themselves are
// tested with all writers of files, in tests/writers/.
#include "util/file_set.h"

#include <map>

#include "tests/plugin_folder.h"
#include "util/files.h"

namespace {

namespace fs = std::filesystem;

using Tree = std::map<std::string, std::string>;

class FileSet : public PluginFolder {
protected:
    Tree Files() const {
        Tree tree;
        for (const auto &entry : fs::directory_iterator(plugin + "systems"))
            tree[entry.path().filename()] = ReadFileToString(entry.path());
        return tree;
    }

    void Restore(const Tree &tree) {
        fs::remove_all(plugin + "systems");
        for (const auto &[name, text] : tree) write("systems/" + name, text);
    }
};

// As it was left when files were swapped without a journal.
TEST_F(FileSet, ATargetThatIsMissingComesBack) {
    Restore({{"a.txt.fennic-old", "old a"},
             {"b.txt", "b"},
             {"b.txt.fennic-new", "half"},
             {"_systems.txt", "a\nb"}});
    EXPECT_TRUE(FinishFileSet(plugin + "systems/"));
    EXPECT_EQ(Files(), (Tree{{"a.txt", "old a"}, {"b.txt", "b"}, {"_systems.txt", "a\nb"}}));
}

} // namespace
