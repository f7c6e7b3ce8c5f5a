// Links: what resolves. That they keep pointing at what they mean is the editor's test.
#include "tests/systems/model_folder.h"

namespace {

class Links : public ModelFolder {
protected:
    Links() {
        Load("sys=S\ndev=D\nout=P,double,,0,,,,,,,,0\nlogic:\n[S.D.Q]>[S.E.in_X]\ncalc=[S.D.Q]+[S.E.LATER]\n"
             + Out("Q", "5") + "dev=E\n" + Out("in_X", "1")
             + "logic:\n[S.E.in_X]==[S.D.Q]\ncalc=[S.E.in_X]*[S.E.in_X]\n");
    }

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

} // namespace
