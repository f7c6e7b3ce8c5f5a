// What an interrupted set of files left is made whole at the next start. The interruptions themselves are
// tested with all writers of files, in tests/writers/.
#include "util/file_set.h"

#include "tests/plugin_folder.h"

// As it was left when files were swapped without a journal.
TEST_F(PluginFolder, ATargetThatIsMissingComesBack) {
    const std::string folder = plugin + "systems/";
    RestoreTree(folder, {},
                {{"a.txt.fennic-old", "old a"},
                 {"b.txt", "b"},
                 {"b.txt.fennic-new", "half"},
                 {"_systems.txt", "a\nb"}});
    EXPECT_TRUE(FinishFileSet(folder));
    EXPECT_EQ(ReadTree(folder), (Tree{{"a.txt", "old a"}, {"b.txt", "b"}, {"_systems.txt", "a\nb"}}));
}
