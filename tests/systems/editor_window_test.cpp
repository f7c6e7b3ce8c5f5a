// The editor's window: whatever is selected on whatever screen, zones do not overlap and stay on the screen.
#include "systems/editor/window.h"
#include "systems/model_end.h"

#include "gfx/fonts.h"
#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"
#include "systems/editor/clicks.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_model.h"

namespace {

class EditorWindow : public ModelFolder {
protected:
    static void ExpectTidy(int width, int height) {
        std::vector<click_zone_class> all = parZones;
        all.insert(all.end(), vectorZones.begin(), vectorZones.end());
        ASSERT_GT(all.size(), 10U);
        for (size_t i = 0; i < all.size(); i++) {
            const Area &a = all[i].area;
            EXPECT_TRUE(a.left >= 0 && a.right <= width && a.bottom >= 0 && a.top <= height
                        && a.left < a.right)
                << all[i].name << " at " << a.left << "," << a.top;
            for (size_t k = 0; k < i; k++) {
                const Area &b = all[k].area;
                const bool isApart =
                    a.right <= b.left || b.right <= a.left || a.bottom >= b.top || b.bottom >= a.top;
                EXPECT_TRUE(isApart) << all[i].name << " over " << all[k].name << " at " << a.left << ","
                                     << a.top;
            }
        }
    }
};

TEST_F(EditorWindow, ZonesStandApartOnEveryScreen) {
    std::filesystem::copy(SHIPPED_DATA "/fnt", plugin + "data/fnt", std::filesystem::copy_options::recursive);
    LoadFonts();
    RandomModel random(5);
    std::string text = random.Text() + random.Text() + "dev=A DEVICE WITH A VERY LONG NAME INDEED\n";
    for (int i = 0; i < 200; i++)
        text += Out("A_PARAMETER_WITH_A_LONG_NAME_" + std::to_string(i), "12345.678");
    Load("what is this\n" + random.WithMistakes(text)); // and much that is not understood
    SysWindowCreate();
    isEditorShown = true;
    for (const auto &[width, height] : {std::pair{1280, 800}, {1366, 900}, {1920, 1080}, {3840, 2160}}) {
        simhost::SetScreenSize(width, height);
        for (int i = 0; i < 60 && !HasFailure(); i++) {
            SCOPED_TRACE(std::to_string(width) + " " + std::to_string(i));
            const auto system = static_cast<int>(random.Below(6));
            SelectPlace({system, static_cast<int>(random.Below(5)), static_cast<int>(random.Below(7))});
            showCalc = random.Chance(50);
            showUsage = random.Chance(50);
            showGraph = random.Chance(50);
            showKept = random.Chance(50);
            for (int &first : scroll) first = static_cast<int>(random.Below(300));
            simhost::DrawFrame(false);
            ExpectTidy(width, height);
            ASSERT_FALSE(vectorZones.empty());
            // One click on whatever there is, apart from what hides the editor.
            const click_zone_class zone = parZones[random.Below(static_cast<unsigned>(parZones.size()))];
            ClickZone(zone, false);
        }
    }
    SysWindowDestroy();
    DeleteSystems();
    UnLoadFonts();
}

// What a click did, or why it did nothing, as the author reads it.
TEST_F(EditorWindow, ClicksSayWhatTheyDid) {
    Load("sys=S\ndev=D\n" + Out("P") + Out("Q") + "logic:\nexecute=0,<S.D.P>,0\n");
    SysWindowCreate();
    const auto click = [](int action, int list, int item) {
        click_zone_class zone;
        zone.action = action;
        zone.place = {{0, 0, selOut}, 0};
        zone.list = list;
        zone.item = item;
        ClickZone(zone, false);
        return editorMessage;
    };
    const auto says = [](const std::string &message, const char *part) {
        return isEditorMessageBad && message.find(part) != std::string::npos;
    };
    SelectPlace({0, 0, 1});
    const unsigned changes = modelChangeCount;
    EXPECT_TRUE(says(click(ActionPasteAction, -1, 0), "nothing was copied"));
    EXPECT_TRUE(says(click(ActionPaste, ListOut, -1), "nothing was copied"));
    EXPECT_TRUE(says(click(ActionCopyAction, -1, -1), "first click"));
    EXPECT_EQ(modelChangeCount, changes);
    click(ActionCopyAction, -1, 0);
    EXPECT_FALSE(says(click(ActionPasteAction, -1, 0), ""));
    EXPECT_EQ(Parameter("S.D.Q").logic[0].executes.size(), 2U);
    EXPECT_FALSE(says(click(ActionDelete, ListOut, -1), "")) << "nobody uses it";
    click(ActionUndo, -1, -1);
    SelectPlace({0, 0, 0});
    EXPECT_TRUE(says(click(ActionDelete, ListOut, -1), "used by S.D.Q"));
    EXPECT_TRUE(Parameter("S.D.P").deleted);
    click(ActionDelete, ListDev, -1);
    EXPECT_TRUE(says(click(ActionNew, ListOut, -1), "was deleted"));
    SysWindowDestroy();
    DeleteSystems();
}

} // namespace
