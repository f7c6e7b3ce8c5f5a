// Links: what resolves, and that they keep pointing at what they mean when the editor changes the tree.
#include "tests/systems/model_folder.h"

namespace {

class Links : public ModelFolder {
protected:
    Links() {
        Load("sys=S\ndev=D\nout=P,double,,0,,,,,,,,0\nlogic:\n[S.D.Q]>[S.E.in_X]\ncalc=[S.D.Q]+[S.E.LATER]\n"
             + Out("Q", "5") + "dev=E\n" + Out("in_X", "1")
             + "logic:\n[S.E.in_X]==[S.D.Q]\ncalc=[S.E.in_X]*[S.E.in_X]\n");
    }

    static compare_block_class &Comparison() { return Parameter("S.D.P").logic[0].compares[0]; }
    static sysLink_struct &Element(size_t index) {
        return Parameter("S.D.P").logic[0].calcs[0].stack[index].link;
    }
};

TEST_F(Links, WhatResolves) {
    const struct {
        const char *text;
        int kind;
    } rows[] = {
        {"S.D.Q", LinkLive}, {"S.D.Q.more", LinkLive}, {"S.D", LinkNone},
        {"S", LinkNone},     {"", LinkNone},           {"..", LinkNone},
        {"s.d.q", LinkNone}, {"S.D.", LinkNone},       {"S.D.Q ", LinkNone},
    };
    for (const auto &row : rows) {
        const sysLink_struct link = String2sysLink(row.text);
        EXPECT_EQ(link.kind, row.kind) << row.text;
        EXPECT_EQ(GetValueFromSysLink(link), row.kind == LinkLive ? 5 : 0) << row.text;
    }
    // Unresolved: reported at load, marked on the owner, its text kept.
    EXPECT_EQ(CountNewLines({"Error!!! Cant find parameter: S.E.LATER"}), 1);
    EXPECT_EQ(Element(1).kind, LinkUnresolved);
    EXPECT_EQ(Element(1).name, "S.E.LATER");
    EXPECT_TRUE(Parameter("S.D.P").hasError && systems_vector[0].devices[0].hasError
                && systems_vector[0].hasError);
    EXPECT_FALSE(systems_vector[0].devices[1].hasError);
    EXPECT_EQ(SysDevOut2name({0, 1, 0}), "S.E.in_X");
    for (int index : {-1, 2, 1000000}) {
        EXPECT_EQ(SysDevOut2name({index, 0, 0}), "");
        EXPECT_EQ(SysDevOut2name({0, index, 0}), "");
        EXPECT_EQ(SysDevOut2name({0, 0, index}), "");
    }
}

TEST_F(Links, OfSeveralOfOneNameTheFirstIsMeant) {
    Load("sys=T\ndev=D\n" + Out("P", "1") + Out("P", "2") + "dev=D\n" + Out("P", "3") + Out("ONLY", "4")
         + "sys=T\ndev=F\n" + Out("P", "5"));
    EXPECT_EQ(Value("T.D.P"), 1);
    EXPECT_EQ(String2sysLink("T.D.ONLY").sys, -1);
    EXPECT_EQ(String2sysLink("T.F.P").sys, -1);
    RemapAll();
    EXPECT_EQ(Value("T.D.P"), 1);
}

TEST_F(Links, AParameterThatComesLaterRepairsItsLinks) {
    Frame();
    ModelChanges();
    out_parameter_struct later;
    later.name = "LATER";
    later.value = 30;
    systems_vector[0].devices[1].outs.push_back(later);
    SysLinkRefresh(0);
    EXPECT_EQ(Element(1).kind, LinkLive);
    EXPECT_EQ(Value("S.E.in_X"), 1);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 35);
}

TEST_F(Links, FollowTheObjectOrTheName) {
    Frame();
    ModelChanges();
    Parameter("S.D.Q").name = "RENAMED";
    SysLinkRefresh(1);
    EXPECT_EQ(Element(0).name, "S.D.RENAMED");
    EXPECT_EQ(Comparison().a.kind, LinkLive);
    EXPECT_EQ(Element(1).name, "S.E.LATER") << "what names nothing keeps its text";
    Parameter("S.D.RENAMED").name = "AGAIN";
    SysLinkRefresh(0);
    EXPECT_EQ(Element(0).kind, LinkUnresolved);
    EXPECT_EQ(Element(0).name, "S.D.RENAMED");
    Frame();
    EXPECT_EQ(Value("S.D.P"), 5) << "[0]>[1] is false: the value stays";
    Parameter("S.D.AGAIN").name = "RENAMED";
    SysLinkRefresh(0);
    EXPECT_EQ(Element(0).kind, LinkLive);
}

TEST_F(Links, ToADeletedParameterStayReadable) {
    Parameter("S.D.Q").deleted = true;
    SysLinkRefresh(0);
    EXPECT_EQ(Element(0).kind, LinkDeleted);
    EXPECT_EQ(String2sysLink("S.D.Q").kind, LinkDeleted);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 5);
    EXPECT_EQ(Value("S.D.Q"), 5);
}

TEST_F(Links, FollowAMovedParameter) {
    ModelChanges();
    OutParameterSysLinkCopy = String2sysLink("S.D.Q");
    systems_vector[0].devices[1].outs.push_back(Parameter("S.D.Q"));
    OutParameterSysLinkPlace = {{0, 1, 1}, "", LinkNone};
    SysLinkPlace();
    EXPECT_EQ(Element(0).name, "S.E.Q");
    EXPECT_EQ(Element(0).dev, 1);
    EXPECT_EQ(Comparison().a.name, "S.E.Q");
    EXPECT_EQ(Comparison().b.name, "S.E.in_X");
    OutParameterSysLinkPlace.out = 99;
    SysLinkPlace(); // nowhere: nothing changes
    EXPECT_EQ(Element(0).name, "S.E.Q");
}

TEST_F(Links, ACopiedDeviceReadsItsOwnInputs) {
    DeviceCopy = systems_vector[0].devices[1];
    systems_vector[0].devices.push_back(DeviceCopy);
    systems_vector[0].devices[2].name = "F";
    RemapAll();
    DeviceTemplatePreparation("F");
    const logicblock_struct &block = DeviceCopy.outs[0].logic[0];
    EXPECT_EQ(block.compares[0].a.name, "S.F.in_X");
    EXPECT_EQ(block.compares[0].a.dev, 2);
    EXPECT_EQ(block.compares[0].b.name, "S.D.Q") << "shared";
    EXPECT_EQ(block.calcs[0].stack[1].link.name, "S.F.in_X");
}

} // namespace
