// Datarefs as a plug-in meets them: types without conversion, clipped arrays, orphans, accessors.
#include "XPLMDataAccess.h"

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simhost/events.h"
#include "simhost/simulator.h"

using namespace simhost;

namespace {

class DataAccess : public ::testing::Test {
protected:
    DataAccess() {
        ResetSimulator();
        ActAsPlugin("/nowhere/plugins/test/64/lin.xpl");
    }
};

// An owner's value with a count of its calls.
struct Owned {
    int intValue = 0;
    float floatValue = 0;
    int calls = 0;
    std::vector<int> elements;
    std::string text;
};

template <typename Value, Value Owned::*value> Value Read(void *refcon) {
    auto *owned = static_cast<Owned *>(refcon);
    owned->calls++;
    return owned->*value;
}
template <typename Value, Value Owned::*value> void Write(void *refcon, Value written) {
    auto *owned = static_cast<Owned *>(refcon);
    owned->calls++;
    owned->*value = written;
}
int ReadElements(void *refcon, int *out, int offset, int maximum) {
    const auto &elements = static_cast<Owned *>(refcon)->elements;
    if (out == nullptr) return static_cast<int>(elements.size());
    int count = 0;
    for (int i = offset; i < static_cast<int>(elements.size()) && count < maximum; i++) {
        out[count++] = elements[static_cast<std::size_t>(i)];
    }
    return count;
}
void WriteElements(void *refcon, int *values, int offset, int count) {
    auto &elements = static_cast<Owned *>(refcon)->elements;
    for (int i = 0; i < count && offset + i < static_cast<int>(elements.size()); i++) {
        elements[static_cast<std::size_t>(offset) + static_cast<std::size_t>(i)] = values[i];
    }
}
int ReadText(void *refcon, void *out, int offset, int maximum) {
    const std::string &text = static_cast<Owned *>(refcon)->text;
    if (out == nullptr) return static_cast<int>(text.size());
    const int count = std::min(static_cast<int>(text.size()) - offset, maximum);
    std::memcpy(out, text.data() + offset, static_cast<std::size_t>(count));
    return count;
}
void WriteText(void *refcon, void *values, int, int length) {
    static_cast<Owned *>(refcon)->text.assign(static_cast<const char *>(values),
                                              static_cast<std::size_t>(length));
}

XPLMDataRef Register(const char *name, XPLMDataTypeID type, int writable, Owned &owned) {
    return XPLMRegisterDataAccessor(name, type, writable, Read<int, &Owned::intValue>,
                                    Write<int, &Owned::intValue>, Read<float, &Owned::floatValue>,
                                    Write<float, &Owned::floatValue>, nullptr, nullptr, ReadElements,
                                    WriteElements, nullptr, nullptr, ReadText, WriteText, &owned, &owned);
}

TEST_F(DataAccess, NothingIsConvertedBetweenTypes) {
    PublishDataref("t/int", xplmType_Int);
    PublishDataref("t/float", xplmType_Float);
    PublishDataref("t/double", xplmType_Double);
    const XPLMDataRef i = XPLMFindDataRef("t/int"), f = XPLMFindDataRef("t/float"),
                      d = XPLMFindDataRef("t/double");
    XPLMSetDatai(i, 7);
    XPLMSetDataf(f, 2.5f);
    XPLMSetDatad(d, 1e-9);
    EXPECT_EQ(XPLMGetDatai(i), 7);
    EXPECT_EQ(XPLMGetDataf(f), 2.5f);
    EXPECT_EQ(XPLMGetDatad(d), 1e-9);
    EXPECT_EQ(XPLMGetDataf(i), 0);
    EXPECT_EQ(XPLMGetDatad(i), 0);
    EXPECT_EQ(XPLMGetDatai(f), 0);
    XPLMSetDataf(i, 3);
    XPLMSetDatad(f, 3);
    XPLMSetDatai(d, 3);
    EXPECT_EQ(XPLMGetDatai(i), 7);
    EXPECT_EQ(XPLMGetDataf(f), 2.5f);
    EXPECT_EQ(XPLMGetDatad(d), 1e-9);
    EXPECT_EQ(XPLMGetDatavi(i, nullptr, 0, 0), 0);
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
    Owned owned{1, 1, 0, {1, 2}, "text"};
    const XPLMDataTypeID all = xplmType_Int | xplmType_Float | xplmType_IntArray | xplmType_Data;
    const XPLMDataRef handle = Register("t/fixed", all, 0, owned);
    EXPECT_EQ(XPLMCanWriteDataRef(handle), 0);
    XPLMSetDatai(handle, 5);
    XPLMSetDataf(handle, 5);
    int element = 5;
    char byte = 'x';
    XPLMSetDatavi(handle, &element, 0, 1);
    XPLMSetDatab(handle, &byte, 0, 1);
    EXPECT_EQ(owned.intValue, 1);
    EXPECT_EQ(owned.floatValue, 1);
    EXPECT_EQ(owned.elements, (std::vector<int>{1, 2}));
    EXPECT_EQ(owned.text, "text");
    EXPECT_FALSE(SetNumber("t/fixed", 5));

    // The simulator's own: for plug-ins it stands, the simulator changes it.
    const XPLMDataRef paused = XPLMFindDataRef("sim/time/paused");
    EXPECT_EQ(XPLMCanWriteDataRef(paused), 0);
    XPLMSetDatai(paused, 1);
    EXPECT_EQ(XPLMGetDatai(paused), 0);
    EXPECT_TRUE(SetNumber("sim/time/paused", 1));
    EXPECT_EQ(XPLMGetDatai(paused), 1);
    EXPECT_EQ(XPLMCanWriteDataRef(paused), 0);
}

TEST_F(DataAccess, AnOrphanRevivesUnderTheSameHandle) {
    Owned owned{5, 0, 0, {}, {}};
    const XPLMDataRef handle = Register("t/orphan", xplmType_Int, 1, owned);
    EXPECT_EQ(Register("t/orphan", xplmType_Int, 1, owned), nullptr) << "the name is taken";
    EXPECT_EQ(XPLMIsDataRefGood(handle), 1);
    XPLMUnregisterDataAccessor(handle);
    EXPECT_EQ(XPLMIsDataRefGood(handle), 0);
    EXPECT_EQ(XPLMFindDataRef("t/orphan"), handle) << "known still, but not good";
    EXPECT_EQ(XPLMGetDataRefTypes(handle), xplmType_Unknown);
    EXPECT_EQ(XPLMGetDatai(handle), 0);
    XPLMSetDatai(handle, 9);
    EXPECT_EQ(owned.calls, 0);
    EXPECT_EQ(owned.intValue, 5);
    XPLMUnregisterDataAccessor(handle);

    Owned other{6, 0, 0, {}, {}};
    EXPECT_EQ(Register("t/orphan", xplmType_Int, 1, other), handle);
    EXPECT_EQ(XPLMGetDatai(handle), 6);

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
    XPLMSetDatai(Register("t/own", xplmType_Int, 1, owned), 3); // its own: no news
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

    ASSERT_EQ(XPLMShareData("t/told", xplmType_FloatArray, Changed, &one), 1);
    ActAsPlugin("/nowhere/plugins/third/64/lin.xpl");
    XPLMSetDatavf(XPLMFindDataRef("t/told"), numbers, 0, 2);
    EXPECT_EQ(changes, 2);
}

} // namespace
