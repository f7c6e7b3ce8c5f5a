// Where the system keeps the library in memory, the plug-in starts again in it as if it were the first time:
// fifty times the same datarefs, menus, windows and OpenGL objects, and no memory more.
#include <dlfcn.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "simhost/drawing/gl_context.h"
#include "simhost/interface/menus.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"
#include "simhost/windows/windows.h"
#include "simhost/world/aircraft_folder.h"

extern "C" [[gnu::weak]] size_t __sanitizer_get_current_allocated_bytes();

namespace {

const int Starts = 50;
const size_t WarmUp = 20; // starts until every buffer of the simulator and of OpenGL has its size
const GLuint HighestName = 1000;

size_t AllocatedBytes() {
    return __sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes()
                                                   : mallinfo2().uordblks;
}

size_t CountItems(const std::vector<simhost::MenuItemView> &items) {
    size_t count = items.size();
    for (const simhost::MenuItemView &item : items) count += CountItems(item.items);
    return count;
}

template <typename IsName> size_t CountNames(IsName isName) {
    size_t count = 0;
    for (GLuint name = 1; name <= HighestName; name++) count += isName(name) ? 1 : 0;
    return count;
}

// What there is while the plug-in runs, and what it says on the way.
struct Inventory {
    size_t datarefs, menuItems, windows, textures, framebuffers, sentMessages, logLines;
    auto operator<=>(const Inventory &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Inventory &found) {
    return out << found.datarefs << " datarefs, " << found.menuItems << " menu items, " << found.windows
               << " windows, " << found.textures << " textures, " << found.framebuffers << " framebuffers, "
               << found.sentMessages << " messages, " << found.logLines << " log lines";
}

Inventory TakeInventory() {
    return {simhost::TakeNamesToldToDatarefBrowser().size(),
            CountItems(simhost::MenuItems()),
            simhost::WindowsFrontToBack().size(),
            CountNames(glIsTexture),
            CountNames(glIsFramebuffer),
            simhost::TakeSentMessages().size(),
            simhost::TakeLogLines().size()};
}

class Restart : public ::testing::Test {
protected:
    simhost::ScratchAircraft scratch;
    std::string library;
    void *kept = nullptr;

    Restart() {
        std::string error;
        simhost::ResetSimulator();
        simhost::ProvideContext();
        scratch.root = simhost::MakeScratchRoot(error);
        const bool isMade = simhost::MakeScratchAircraft(STAGED_AIRCRAFT "/Cessna_172SP", scratch, error);
        EXPECT_TRUE(isMade) << error;
        const simhost::AircraftFile file = simhost::FindAircraftFile(scratch.aircraft);
        simhost::SetFolders(scratch.root, scratch.aircraft, file.name);
        library = simhost::FindPluginLibraries(scratch.aircraft).at(0);
        simhost::PublishDataref("sim/aircraft/view/acf_descrip", xplmType_Data, 260);
        simhost::SetText("sim/aircraft/view/acf_descrip", file.description);
        simhost::SwitchDatarefBrowser(true);
        const std::string plugin = library.substr(0, library.rfind('/') + 1);
        std::ofstream(plugin + "data/developer.txt") << "editor=1\n";
        kept = dlopen(library.c_str(), RTLD_NOW | RTLD_NODELETE);
    }
    ~Restart() override {
        dlclose(kept);
        std::filesystem::remove_all(scratch.root);
    }

    // One life of the plug-in, with something left in every corner: a phrase heard, the button held, the
    // position creator open.
    Inventory Live(const char *phrase) {
        simhost::SetFlightTimeSeconds(100);
        std::string error;
        const XPLMPluginID id = simhost::LoadPlugin(library, error);
        EXPECT_EQ(error, "");
        for (int i = 0; i < 5; i++) simhost::StepFrame(0.05);
        simhost::MenuPlace positionCreator;
        EXPECT_TRUE(simhost::FindMenuItem("Fennic/Editor", positionCreator, error)) << error;
        simhost::ChooseMenuItem(positionCreator);
        for (int i = 0; i < 3; i++) simhost::StepFrame(0.05);
        const Inventory found = TakeInventory();
        simhost::HoldCommand("kv/fennic/rec");
        simhost::SetText("kv/fr_speech", phrase);
        simhost::HoldCommand("kv/fennic/select");
        for (int i = 0; i < 3; i++) simhost::StepFrame(0.05);
        simhost::ReleaseCommand("kv/fennic/rec");
        simhost::UnloadPlugin(id);
        EXPECT_TRUE(simhost::LastLeftBehind().errors.empty());
        simhost::ReleaseCommand("kv/fennic/select");
        simhost::TakeSentMessages();
        simhost::TakeLogLines();
        return found;
    }
};

TEST_F(Restart, FiftyTimesInOneImage) {
    const Inventory first = Live("before start checklist");
    EXPECT_GT(first.datarefs, 150U);
    EXPECT_GT(first.menuItems, 20U);
    EXPECT_GE(first.windows, 3U) << "the list, the editor and the position creator";
    EXPECT_GT(first.textures, 3U);
    EXPECT_GT(first.framebuffers, 0U);
    size_t bytes = 0;
    for (size_t start = 1; start < Starts; start++) {
        ASSERT_EQ(Live(start % 2 ? "abort" : "before start checklist"), first) << "start " << start;
        if (start == WarmUp) bytes = AllocatedBytes();
    }
    EXPECT_LT(AllocatedBytes(), bytes + 3000) << "a hundred bytes for each start";
}

} // namespace
