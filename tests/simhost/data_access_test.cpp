// Datarefs as a plug-in meets them: types without conversion, clipped arrays, orphans, accessors.
#include "XPLMDataAccess.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "simhost/events.h"
#include "tests/simhost/as_plugin.h"

using namespace simhost;

namespace {

using DataAccess = AsPlugin;

// An owner's value with a count of its calls.
struct Owned {
    int value = 0, calls = 0;
};
int Read(void *refcon) {
    static_cast<Owned *>(refcon)->calls++;
    return static_cast<Owned *>(refcon)->value;
}
void Write(void *refcon, int written) {
    static_cast<Owned *>(refcon)->calls++;
    static_cast<Owned *>(refcon)->value = written;
}
XPLMDataRef Register(const char *name, int writable, Owned &owned) {
    return XPLMRegisterDataAccessor(name, xplmType_Int, writable, Read, Write, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &owned,
                                    &owned);
}

TEST_F(DataAccess, NothingIsConvertedBetweenTypes) {
    const XPLMDataTypeID types[] = {xplmType_Int, xplmType_Float, xplmType_Double};
    for (XPLMDataTypeID type : types) {
        const std::string name = "t/" + std::to_string(type);
        PublishDataref(name, type);
        const XPLMDataRef dataref = XPLMFindDataRef(name.c_str());
        XPLMSetDatai(dataref, 7);
        XPLMSetDataf(dataref, 2.5f);
        XPLMSetDatad(dataref, 1e-9);
        EXPECT_EQ(XPLMGetDatai(dataref), type == xplmType_Int ? 7 : 0);
        EXPECT_EQ(XPLMGetDataf(dataref), type == xplmType_Float ? 2.5f : 0);
        EXPECT_EQ(XPLMGetDatad(dataref), type == xplmType_Double ? 1e-9 : 0);
        EXPECT_EQ(XPLMGetDatavi(dataref, nullptr, 0, 0), 0);
    }
}

TEST_F(DataAccess, ArraysAreClippedToWhatThereIs) {
    PublishDataref("t/array", xplmType_FloatArray, 4);
    const XPLMDataRef array = XPLMFindDataRef("t/array");
    EXPECT_EQ(XPLMGetDatavf(array, nullptr, 0, 0), 4);
    EXPECT_EQ(XPLMGetDatavf(array, nullptr, 3, 1), 4);
    float values[6] = {1, 2, 3, 4, 5, 6};
    XPLMSetDatavf(array, values, 2, 6); // two fit
    float read[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(XPLMGetDatavf(array, read, 0, 6), 4);
    EXPECT_EQ(std::vector<float>(read, read + 6), (std::vector<float>{0, 0, 1, 2, 9, 9}));
    EXPECT_EQ(XPLMGetDatavf(array, read, 3, 6), 1);
    EXPECT_EQ(read[0], 2);
    for (int offset : {-1, 4, INT_MAX, INT_MIN}) {
        XPLMSetDatavf(array, values, offset, 1);
        EXPECT_EQ(XPLMGetDatavf(array, read, offset, 1), 0) << offset;
    }
    XPLMSetDatavf(array, values, 0, 4);
    EXPECT_EQ(XPLMGetDatavf(array, read, 1, INT_MAX), 3);
    XPLMSetDatavf(array, values, 0, -3);
    XPLMSetDatavf(array, nullptr, 0, 4);
    EXPECT_EQ(XPLMGetDatavf(array, read, 0, -1), 0);
    EXPECT_EQ(XPLMGetDatavf(array, read, 0, 4), 4);
    EXPECT_EQ(std::vector<float>(read, read + 4), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_EQ(XPLMGetDatavi(array, nullptr, 0, 0), 0);
}

TEST_F(DataAccess, NotWritableMeansNotWritten) {
    Owned owned{1};
    const XPLMDataRef handle = Register("t/fixed", 0, owned);
    XPLMSetDatai(handle, 5);
    EXPECT_EQ(XPLMCanWriteDataRef(handle) + owned.calls, 0);
    EXPECT_FALSE(SetNumber("t/fixed", 5));

    // The simulator's own: for plug-ins it stands, the simulator changes it.
    const XPLMDataRef paused = XPLMFindDataRef("sim/time/paused");
    XPLMSetDatai(paused, 1);
    EXPECT_EQ(XPLMGetDatai(paused), 0);
    EXPECT_TRUE(SetNumber("sim/time/paused", 1));
    EXPECT_EQ(XPLMGetDatai(paused), 1);
    EXPECT_EQ(XPLMCanWriteDataRef(paused), 0);
}

TEST_F(DataAccess, AnOrphanRevivesUnderTheSameHandle) {
    Owned owned{5}, other{6};
    const XPLMDataRef handle = Register("t/orphan", 1, owned);
    EXPECT_EQ(Register("t/orphan", 1, owned), nullptr) << "the name is taken";
    EXPECT_EQ(XPLMIsDataRefGood(handle), 1);
    for (int again : {0, 1}) {
        XPLMUnregisterDataAccessor(handle);
        EXPECT_EQ(XPLMIsDataRefGood(handle), 0) << again;
    }
    EXPECT_EQ(XPLMFindDataRef("t/orphan"), handle) << "known still, but not good";
    EXPECT_EQ(XPLMGetDataRefTypes(handle), xplmType_Unknown);
    XPLMSetDatai(handle, 9);
    EXPECT_EQ(XPLMGetDatai(handle) + owned.calls, 0);
    EXPECT_EQ(Register("t/orphan", 1, other), handle);
    EXPECT_EQ(XPLMGetDatai(handle), 6);

    // The list has what is good, and tells of it what the caller has room for.
    std::vector<XPLMDataRef> all(static_cast<std::size_t>(XPLMCountDataRefs()) + 1);
    XPLMGetDataRefsByIndex(0, static_cast<int>(all.size()), all.data());
    EXPECT_EQ(all[all.size() - 1], nullptr);
    EXPECT_EQ(std::count(all.begin(), all.end(), handle), 1);
    XPLMDataRefInfo_t info = {};
    info.structSize = offsetof(XPLMDataRefInfo_t, writable);
    info.writable = 7;
    XPLMGetDataRefInfo(handle, &info);
    EXPECT_STREQ(info.name, "t/orphan");
    EXPECT_EQ(info.type, xplmType_Int);
    EXPECT_EQ(info.writable, 7);
    XPLMUnregisterDataAccessor(handle);
    EXPECT_EQ(XPLMCountDataRefs(), static_cast<int>(all.size()) - 2);

    // Nobody unregisters what is the simulator's.
    const XPLMDataRef time = XPLMFindDataRef("sim/time/total_flight_time_sec");
    XPLMUnregisterDataAccessor(time);
    EXPECT_EQ(XPLMIsDataRefGood(time), 1);
}

TEST_F(DataAccess, ReportsWhatAPluginChangesInOthersData) {
    std::vector<std::string> written;
    SetEventListener([&](const Event &event) {
        if (event.kind == EventKind::DatarefWritten) written.push_back(event.subject + "=" + event.detail);
    });
    PublishDataref("t/float", xplmType_Float);
    PublishDataref("t/ints", xplmType_IntArray, 4);
    PublishDataref("t/text", xplmType_Data, 8);
    Owned owned;
    XPLMSetDatai(Register("t/own", 1, owned), 3); // its own: no news
    XPLMSetDataf(XPLMFindDataRef("t/float"), 0.1f);
    XPLMSetDataf(XPLMFindDataRef("t/float"), 0.1f); // changes nothing
    SetNumber("t/float", 5);                        // not the plug-in
    int values[4] = {0, 6, 0, 7};
    XPLMSetDatavi(XPLMFindDataRef("t/ints"), values, 0, 4);
    char text[] = "hello";
    XPLMSetDatab(XPLMFindDataRef("t/text"), text, 0, sizeof text);
    SetEventListener({});
    XPLMSetDataf(XPLMFindDataRef("t/float"), 9);
    EXPECT_EQ(written,
              (std::vector<std::string>{"t/float=0.1", "t/ints[1]=6", "t/ints[3]=7", "t/text=hello"}));
}

int changes = 0;
void Changed(void *refcon) {
    changes += *static_cast<int *>(refcon);
}

TEST_F(DataAccess, SharedDataTellsTheOthers) {
    int one = 1;
    ASSERT_EQ(XPLMShareData("t/shared", xplmType_Int, Changed, &one), 1);
    EXPECT_EQ(XPLMShareData("t/shared", xplmType_Float, Changed, &one), 0) << "another type";
    EXPECT_EQ(XPLMShareData("sim/time/paused", xplmType_Int, Changed, &one), 0) << "not shared data";
    const XPLMDataRef shared = XPLMFindDataRef("t/shared");
    XPLMSetDatai(shared, 4);
    EXPECT_EQ(changes, 0) << "one's own change is no news";
    ActAsPlugin("/nowhere/plugins/other/64/lin.xpl");
    XPLMSetDatai(shared, 5);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(XPLMGetDatai(shared), 5);
    EXPECT_EQ(XPLMUnshareData("t/shared", xplmType_Int, Changed, &one), 0) << "the other shares it";

    // An array is as long as what was written.
    ASSERT_EQ(XPLMShareData("t/sharedvalues", xplmType_FloatArray, nullptr, nullptr), 1);
    const XPLMDataRef values = XPLMFindDataRef("t/sharedvalues");
    float numbers[2] = {1, 2};
    XPLMSetDatavf(values, numbers, 3, 2);
    EXPECT_EQ(XPLMGetDatavf(values, nullptr, 0, 0), 5);
    EXPECT_EQ(XPLMUnshareData("t/sharedvalues", xplmType_FloatArray, nullptr, nullptr), 1);
    EXPECT_EQ(XPLMIsDataRefGood(values), 0);
}

} // namespace
