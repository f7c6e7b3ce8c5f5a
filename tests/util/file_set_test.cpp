// A set of files that is cut at any call, on disks with and without hard links: it is all old or all new, and
// no file is ever missing.
#include "util/file_set.h"

#include <map>

#include "tests/interrupted_calls.h"
#include "tests/plugin_folder.h"
#include "util/files.h"

namespace {

namespace fs = std::filesystem;

using Tree = std::map<std::string, std::string>;

class FileSet : public PluginFolder {
protected:
    const Tree before = {{"a.txt", "old a"}, {"b.txt", "old b"}, {"_systems.txt", "a\nb\n"}};
    const Tree after = {
        {"a.txt", "new a"}, {"b.txt", "new b"}, {"c.txt", "c"}, {"_systems.txt", "a\nb\nc\n"}};

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

    bool Write() const {
        std::vector<FileOfSet> files;
        for (const auto &[name, text] : after) files.push_back({plugin + "systems/" + name, text});
        std::string failed;
        return WriteFileSet(files, failed);
    }
};

TEST_F(FileSet, IsFinishedOrUndoneAfterBeingBrokenOffAnywhere) {
    int points = 0;
    for (const bool haveSecondNames : {true, false}) {
        HaveSecondNames(haveSecondNames);
        Restore(before);
        InterruptCalls(Interruption::None, 0);
        EXPECT_TRUE(Write());
        const int calls = CallsSoFar();
        EXPECT_EQ(Files(), after);
        for (const auto how : {Interruption::FailOnce, Interruption::Die}) {
            for (int call = 1; call <= calls; call++, points++) {
                Restore(before);
                InterruptCalls(how, call);
                const bool isWritten = Write();
                InterruptCalls(Interruption::None, 0);
                const Tree left = Files();
                for (const auto &[name, text] : before) {
                    const bool isThere = left.contains(name);
                    ASSERT_TRUE(isThere && (left.at(name) == text || left.at(name) == after.at(name)))
                        << name << " after call " << call;
                }
                if (how == Interruption::FailOnce) {
                    EXPECT_EQ(left, isWritten ? after : before) << call;
                }
                ResetFiles();
                EXPECT_TRUE(FinishFileSet(plugin + "systems/"));
                const Tree now = Files();
                ASSERT_TRUE(now == after || (now == before && !(isWritten && how == Interruption::FailOnce)))
                    << "call " << call << ", links " << haveSecondNames;
            }
        }
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 100);
}

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
