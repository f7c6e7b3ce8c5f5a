// Published datarefs as other plug-ins and the speech server use them.
#include "frame/datarefs.h"

#include "simhost/plugins.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"

namespace {

class Datarefs : public PluginFolder {
protected:
    // Writes bytes as another plug-in does and returns the text that the dataref then holds.
    static std::string Write(XPLMDataRef handle, const std::string &bytes, int offset, int length) {
        XPLMSetDatab(handle, const_cast<char *>(bytes.data()), offset, length);
        return GetDRFs(handle);
    }
};

TEST_F(Datarefs, StringsCarryTheirTerminatorOverTheInterface) {
    const XPLMDataRef handle = CreateDrf_String("test/string", "");
    EXPECT_EQ(XPLMGetDataRefTypes(handle), xplmType_Data);
    EXPECT_EQ(XPLMGetDatab(handle, nullptr, 0, 0), 1);
    EXPECT_EQ(Write(handle, std::string("abc\0", 4), 0, 4), "abc");
    EXPECT_EQ(XPLMGetDatab(handle, nullptr, 0, 0), 4);
    EXPECT_EQ(Write(handle, std::string("de\0", 3), 2, 3), "abde");
    EXPECT_EQ(Write(handle, std::string("!\0", 2), 100, 2), "abde!") << "an offset beyond the end appends";
    EXPECT_EQ(Write(handle, "xyz", 0, -1), "abde!");
    EXPECT_EQ(Write(handle, "xyz", -1, 3), "abde!");
    XPLMSetDatab(handle, nullptr, 0, 3);
    EXPECT_EQ(GetDRFs(handle), "abde!");

    const struct {
        int offset, max, count;
        const char *bytes;
    } reads[] = {{0, 3, 3, "abd"}, {3, 100, 3, "e!"}, {5, 1, 1, ""}, {6, 10, 0, ""},
                 {-1, 4, 0, ""},   {0, 0, 0, ""},     {0, -5, 0, ""}};
    for (const auto &row : reads) {
        char buffer[16];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        EXPECT_EQ(XPLMGetDatab(handle, buffer, row.offset, row.max), row.count) << row.offset;
        EXPECT_EQ(buffer[std::max(row.count, 0)], '#') << "wrote more than it said";
        const auto count = static_cast<size_t>(row.count);
        EXPECT_EQ(std::string(buffer, count), std::string(row.bytes, count));
    }
    EXPECT_EQ(Write(handle, "x", 0, 1), "") << "the one byte is the terminator";
    Write(handle, std::string("ab\0", 3), 0, 3);
    EXPECT_EQ(Write(handle, "", 0, 0), "");
}

TEST_F(Datarefs, AnExistingNameIsRefusedAndTheOldOneWorksOn) {
    const XPLMDataRef first = CreateDrf_Int("test/number", 5);
    simhost::TakeLogLines();
    EXPECT_EQ(CreateDrf_Float("test/number", 1.0F), nullptr);
    EXPECT_EQ(CountNewLines({"CUSTOM DATAREF (float) ERROR (already exist): test/number"}), 1);
    EXPECT_EQ(CreateDrf_String("sim/time/paused", ""), nullptr);
    EXPECT_EQ(CountNewLines({"CUSTOM DATAREF (string) ERROR (already exist): sim/time/paused"}), 1);
    EXPECT_EQ(DRFcounter, 1);
    XPLMSetDatai(first, 7);
    EXPECT_EQ(simhost::GetNumber("test/number"), 7);

    UnregisterDrfs();
    EXPECT_EQ(XPLMFindDataRef("test/number"), nullptr);
    UnregisterDrfs();
}

TEST_F(Datarefs, TheTableRefusesTheThousandth) {
    for (int i = 1; i <= 999; i++)
        ASSERT_NE(CreateDrf_Float("test/f" + std::to_string(i), static_cast<float>(i)), nullptr) << i;
    simhost::TakeLogLines();
    EXPECT_EQ(CreateDrf_Float("test/f1000", 1.0F), nullptr);
    EXPECT_EQ(CreateDrf_Int("test/f1001", 1), nullptr);
    const auto lines = simhost::TakeLogLines();
    EXPECT_EQ(CountLines(lines, {"(float)", "full", "test/f1000"}), 1);
    EXPECT_EQ(CountLines(lines, {"(int)", "full", "test/f1001"}), 1);
    EXPECT_EQ(XPLMFindDataRef("test/f1000"), nullptr);
    EXPECT_EQ(simhost::GetNumber("test/f999"), 999);
    EXPECT_EQ(simhost::GetNumber("test/f1"), 1);
}

TEST_F(Datarefs, TheBrowserIsToldOnlyWhileItIsThere) {
    CreateDrf_Int("test/before", 0);
    simhost::SwitchDatarefBrowser(true);
    CreateDrf_Float("test/float", 0);
    CreateDrf_String("test/text", "x");
    CreateDrf_Int("test/before", 0); // refused: nothing to tell
    EXPECT_EQ(simhost::TakeNamesToldToDatarefBrowser(),
              (std::vector<std::string>{"test/float", "test/text"}));
}

TEST_F(Datarefs, ElementsOfArraysOutsideTheReachAreNotTouched) {
    simhost::PublishDataref("test/floats", xplmType_FloatArray, 20);
    simhost::PublishDataref("test/ints", xplmType_IntArray, 4);
    const XPLMDataRef floats = XPLMFindDataRef("test/floats"), ints = XPLMFindDataRef("test/ints");
    simhost::SetNumber("test/floats", 1.5, 17);
    SetDRFf(floats, 7, 7.5F);
    SetElementf(floats, 15, 15.5F);
    for (int index : {-1, 8, 16, 1000000}) SetDRFf(floats, index, 99);
    for (int index : {-1, 16, 1000000}) SetElementf(floats, index, 99);
    for (int i = 0; i < 20; i++)
        EXPECT_EQ(simhost::GetNumber("test/floats", i), i == 7    ? 7.5
                                                        : i == 15 ? 15.5
                                                        : i == 17 ? 1.5
                                                                  : 0)
            << i;
    EXPECT_EQ(GetDRFf(floats, 8), 0.0F);
    EXPECT_EQ(GetElementf(floats, 15), 15.5F);
    SetDRFi(ints, 3, 9);
    SetElementi(ints, 2, 8);
    SetElementi(ints, 9, 5); // the array is shorter
    EXPECT_EQ(GetDRFi(ints, 3), 9);
    EXPECT_EQ(GetElementi(ints, 2), 8);
    SetDRFf(nullptr, 1, 1.0F);
    EXPECT_EQ(GetElementi(nullptr, 1), 0);
    EXPECT_EQ(GetDRFs(nullptr), "");
}

} // namespace
