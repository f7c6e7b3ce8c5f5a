// Published datarefs as other plug-ins and the speech server use them.
#include "frame/datarefs.h"

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

// What happens to elements of others' arrays is flown in flights/systems_datarefs.lua.
TEST_F(Datarefs, WithoutAHandleNothingHappens) {
    SetDRFf(nullptr, 1, 1.0F);
    EXPECT_EQ(GetElementi(nullptr, 1), 0);
    EXPECT_EQ(GetDRFs(nullptr), "");
}

} // namespace
