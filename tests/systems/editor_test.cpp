// Editing the model: that links end where they should, that what is refused changes nothing, and that random
// editing keeps everything whole and can be taken back to the first byte.
#include "systems/editor/fields.h"
#include "systems/editor/model.h"
#include "systems/editor/undo.h"
#include "systems/editor/usage.h"
#include "systems/writer.h"

#include "frame/datarefs.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_edits.h"
#include "util/files.h"

namespace {

class Editor : public ModelFolder {
protected:
    // All that is written, as the list names it.
    std::string Saved() {
        EXPECT_TRUE(SaveSysToTxtFile()) << saveFailure;
        std::string all = read("systems/_systems.txt");
        for (const std::string &name : ReadFileToVector(plugin + "systems/_systems.txt"))
            all += read("systems/" + name + ".txt");
        return all;
    }

    // What a reader of the files would have: written, read and written again it is the same.
    void ExpectFilesHoldTheModel() {
        const std::string first = Saved();
        ModelChanges();
        const std::vector<system_class> model = systems_vector;
        systems_vector.clear();
        mapSystemName.clear();
        simhost::TakeLogLines();
        CreateSystemsFromFile();
        EXPECT_EQ(CountNewLines({"dropped"}), 0);
        EXPECT_TRUE(Saved() == first) << "not read back as it was written";
        ModelChanges();
        systems_vector = model;
        RemapAll();
    }

    template <typename Records> static void ExpectMapped(const NameIndex &index, const Records &records) {
        NameIndex expected;
        for (const auto &record : records) {
            const int place = static_cast<int>(&record - records.data());
            const auto [entry, isNew] = expected.emplace(record.name, place);
            const bool wasDeleted = !isNew && records[static_cast<size_t>(entry->second)].deleted;
            if (wasDeleted && !record.deleted) entry->second = place;
        }
        EXPECT_EQ(index, expected);
    }

    // Maps equal the vectors; links name what they point at, or are marked.
    static void ExpectWhole() {
        ExpectMapped(mapSystemName, systems_vector);
        for (const system_class &system : systems_vector) {
            ExpectMapped(system.deviceIndex, system.devices);
            for (const device_struct &device : system.devices) ExpectMapped(device.outIndex, device.outs);
        }
        for (system_class &system : systems_vector)
            for (device_struct &device : system.devices)
                for (out_parameter_struct &parameter : device.outs) {
                    ExpectTextsToHoldTheirLinks(parameter);
                    ForEachLinkOf(parameter, [&](const sysLink_struct &link) {
                        if (!isLink(link)) return;
                        const sysLink_struct found = String2sysLink(link.name);
                        if (link.kind == LinkUnresolved) {
                            EXPECT_FALSE(ParameterAt(found)) << link.name;
                            EXPECT_TRUE(parameter.hasError && device.hasError && system.hasError);
                            return;
                        }
                        const ParameterAddress &target = link;
                        EXPECT_TRUE(target == found && found.kind == link.kind) << link.name;
                        EXPECT_TRUE(link.name.starts_with(SysDevOut2name(link)));
                    });
                }
    }

    static void ExpectTextsToHoldTheirLinks(const out_parameter_struct &parameter) {
        for (const logicblock_struct &block : parameter.logic)
            for (const structExecute &action : block.executes) {
                structExecute read = action;
                ReadSpokenLinks(read);
                ASSERT_EQ(read.spokenLinks.size(), action.spokenLinks.size()) << action.text;
                for (size_t i = 0; i < read.spokenLinks.size(); i++)
                    EXPECT_EQ(read.spokenLinks[i].name, action.spokenLinks[i].name) << action.text;
            }
    }

    static std::string Type(int field, const std::string &text, int item = 0, int element = 0) {
        return SetField({field, {{0, 0, 0}, 0}, item, element}, text);
    }
};

TEST_F(Editor, LinksFollowWhatIsRenamedAndMoved) {
    Load("sys=S\ndev=D\n" + Out("P", "5") + Out("in_X") + "dev=E\n" + Out("Q")
         + "logic:\n[S.D.P]==[S.F.P]\n||\n[1]<[S.D.in_X]\ncalc=[S.D.P]+[T.D.in_X]\nsys=T\ndev=D\n"
         + Out("in_X", "7") + "logic:\ncalc=[T.D.in_X]\n" + Out("P"));
    compare_block_class &comparison = systems_vector[0].devices[1].outs[0].logic[0].compares[0];
    const auto left = [&] { return systems_vector[0].devices[1].outs[0].logic[0].compares[0].a.name; };
    const std::string first = Saved();
    EXPECT_EQ(UsersOutside({0, 0}), "S.E.Q");
    UsageVectorRebuild({0, 0, 1});
    ASSERT_EQ(usageVector.size(), 1U) << "on the right";
    CopyOut({0, 1, 0});
    CopyDevice({0, 1});
    EXPECT_EQ(RenameOut({0, 0, 0}, "VOLT"), "");
    EXPECT_EQ(left(), "S.D.VOLT");
    EXPECT_EQ(RenameDevice({0, 0}, "F"), "");
    EXPECT_EQ(RenameOut({0, 0, 0}, "P"), "") << "the name that an unresolved link waits for";
    EXPECT_EQ(comparison.b.kind, LinkLive);
    EXPECT_EQ(RenameSystem({0}, "BUS"), "");
    EXPECT_EQ(left(), "BUS.F.P");
    EXPECT_EQ(PasteDevice({1, -1}), 1);
    EXPECT_EQ(Parameter("T.E.Q").logic[0].compares[0].a.name, "BUS.F.P") << "copied before";
    UndoEditStep();
    EXPECT_EQ(PasteOut({0, 1, -1}), 1);
    EXPECT_EQ(Parameter("BUS.E.Q2").logic[0].compares[0].a.name, "BUS.F.P") << "copied before";
    EXPECT_EQ(OutParameterSysLinkCopy.name, "BUS.E.Q");
    UndoEditStep();
    Frame();
    EXPECT_EQ(Value("BUS.E.Q"), 12);

    // Over to where the name is taken.
    CopyOut({0, 0, 0});
    EXPECT_EQ(MoveOut({1, 0, 0}), 1);
    EXPECT_EQ(left(), "T.D.P2");
    EXPECT_EQ(Value("T.D.P2"), 5) << "at work as before";
    CopyDevice({1, 0});
    EXPECT_EQ(MoveDevice({0, -1}), 2);
    EXPECT_EQ(left(), "BUS.D.P2");
    ExpectWhole();

    // A clone reads its own inputs, also in another system.
    EXPECT_EQ(CloneDevice({0, 2}), 3);
    EXPECT_EQ(Parameter("BUS.D2.in_X").logic[0].calcs[0].stack[0].link.name, "BUS.D2.in_X");
    EXPECT_EQ(PasteDevice({1, -1}), 0);
    EXPECT_EQ(Parameter("T.D.in_X").logic[0].calcs[0].stack[0].link.name, "T.D.in_X");

    UsageVectorRebuild({0, 2, 2});
    ASSERT_EQ(usageVector.size(), 0U);
    const sysLink_struct moved = String2sysLink("BUS.D.P2");
    UsageVectorRebuild(moved);
    ASSERT_EQ(usageVector.size(), 2U);
    EXPECT_EQ(usageVector[1].element, 0);

    DeleteDevice(moved);
    EXPECT_EQ(Parameter("BUS.E.Q").logic[0].compares[0].a.kind, LinkDeleted);
    EXPECT_EQ(Value("BUS.D.P2"), 5) << "readable until the next load";
    ExpectFilesHoldTheModel();
    while (UndoEditStep()) {
    }
    EXPECT_EQ(Saved(), first);
    ExpectWhole();
}

TEST_F(Editor, LinksInSpokenTextsFollowToo) {
    Load("sys=S\ndev=D\n" + Out("P", "5") + Out("in_X") + Out("Q")
         + "logic:\nexecute=1,it is <&S.D.P>; <S.D.P> of <S.D.NONE>#<S.D#.P> is < that,0\n"
           "execute=0,own <S.D.in_X>,0\nexecute=9,<S.D.P>,0\n"
         + "sys=T\ndev=D\n" + Out("R"));
    EXPECT_EQ(CountNewLines({"Cant find parameter: S.D.NONE"}), 1);
    EXPECT_TRUE(Parameter("S.D.Q").hasError);
    const auto text = [](const char *owner, size_t action) {
        return Parameter(owner).logic[0].executes[action].text;
    };
    const std::string first = Saved();
    CopyAction({{0, 0, 2}, 0}, 0);
    EXPECT_EQ(RenameOut({0, 0, 0}, "VOLT"), "");
    EXPECT_EQ(text("S.D.Q", 0), "it is <&S.D.VOLT>, <S.D.VOLT> of <S.D.NONE>#<S.D#.P> is < that");
    EXPECT_EQ(text("S.D.Q", 2), "<S.D.P>") << "no spoken text";
    EXPECT_EQ(ExecCopy.text, text("S.D.Q", 0)) << "what was copied follows";
    EXPECT_NE(RenameOut({0, 0, 0}, "A&B"), "") << "no text could say it";
    EXPECT_EQ(RenameOut({1, 0, 0}, "A&B"), "");
    EXPECT_EQ(RenameOut({0, 0, 1}, "NONE"), "") << "the name that a text waits for";
    EXPECT_FALSE(Parameter("S.D.Q").hasError);
    EXPECT_EQ(RenameOut({0, 0, 1}, "in_X"), "");
    EXPECT_EQ(RenameSystem({0}, "BUS"), "");
    EXPECT_EQ(text("BUS.D.Q", 1), "own <BUS.D.in_X>");
    UsageVectorRebuild({0, 0, 0});
    ASSERT_EQ(usageVector.size(), 1U);
    EXPECT_TRUE(usageVector[0].kind == UsedInText && usageVector[0].item == 0);
    EXPECT_EQ(UsersOutside({0, 0, 0}), "BUS.D.Q");
    EXPECT_EQ(UsersOutside({0, 0, -1}), "") << "only by itself";

    // A clone says its own inputs; what it shares it goes on sharing.
    EXPECT_EQ(CloneDevice({0, 0}), 1);
    EXPECT_EQ(text("BUS.D2.Q", 1), "own <BUS.D2.in_X>");
    EXPECT_TRUE(text("BUS.D2.Q", 0).starts_with("it is <&BUS.D.VOLT>,"));
    CopyOut({0, 0, 0});
    EXPECT_EQ(MoveOut({1, 0, -1}), 1);
    EXPECT_TRUE(text("BUS.D2.Q", 0).starts_with("it is <&T.D.VOLT>,"));
    CopyDevice({1, 0});
    EXPECT_EQ(MoveDevice({0, -1}), 2);
    EXPECT_TRUE(text("BUS.D.Q", 0).starts_with("it is <&BUS.D3.VOLT>,"));
    ExpectWhole();
    ExpectFilesHoldTheModel();
    while (UndoEditStep()) {
    }
    EXPECT_EQ(Saved(), first);
    ExpectWhole();
}

TEST_F(Editor, WhatIsRefusedChangesNothing) {
    Load("sys=S\ndev=D\nout=P,double,,1,,5,,,,,,0\nlogic:\n[S.D.P]==[1]\ninstring=go\ncalc=[S.D.P]\n"
         "execute=4,cmd,0\ngraf=0,0\n"
         + Out("Q") + "sys=T\n");
    const std::string first = Saved();
    const struct {
        int field;
        const char *text;
        int item;
    } refused[] = {
        {FieldSystemName, "", 0},
        {FieldSystemName, "_save", 0},
        {FieldSystemName, "t", 0},
        {FieldDeviceName, "A=B", 0},
        {FieldName, "a.b", 0},
        {FieldName, "Q", 0},
        {FieldName, "a/b", 0},
        {FieldName, "12", 0},
        {FieldName, "[x]", 0},
        {FieldInit, "1,5", 0},
        {FieldInit, "", 0},
        {FieldInit, "1e999", 0},
        {FieldMin, "6", 0},
        {FieldUnit, "a,b", 0},
        {FieldFreeText, "a sys=b", 0},
        {FieldInDataref, "a[16]", 0},
        {FieldInDataref, "a[x]", 0},
        {FieldOutDataref, "a,b", 0},
        {FieldLeft, "S.D", 0},
        {FieldLeft, "two words", 0},
        {FieldRight, "1;x", 0},
        {FieldRight, "1;2.5", 0},
        {FieldRight, ";", 0},
        {FieldLeft, "", 1},
        {FieldLeft, "say calc=", 1},
        {FieldOperand, "CBLOCKx", 0},
        {FieldOperand, "", 0},
        {FieldCalculation, "[1]+2]", 0},
        {FieldCalculation, "[1]%[2]", 0},
        {FieldCalculation, "[1", 0},
        {FieldActionText, "a;b", 0},
        {FieldActionValue, "x", 0},
        {FieldPointX, "-", 0},
        {FieldPointY, "1", 7},
    };
    for (const auto &row : refused)
        EXPECT_NE(Type(row.field, row.text, row.item), "") << row.field << " " << row.text;
    EXPECT_EQ(CountUndoSteps(), 0U);
    EXPECT_EQ(Saved(), first);
    ExpectWhole();
    EXPECT_EQ(Type(FieldName, "Q"), "this name is taken");
    // Signs of the files, and what to write instead.
    EXPECT_NE(Type(FieldInit, "1,5").find("1.5"), std::string::npos);
    EXPECT_NE(Type(FieldLeft, "-1,5").find("-1.5"), std::string::npos);
    EXPECT_NE(Type(FieldRight, "1,2,3").find("1;2;3"), std::string::npos);
    EXPECT_NE(Type(FieldFreeText, "a, b").find("or write ;"), std::string::npos);
    EXPECT_NE(Type(FieldActionText, "a; b").find("write a comma"), std::string::npos);
    // Marked, not refused.
    EXPECT_EQ(Type(FieldInDataref, "t/nowhere[3]"), "");
    EXPECT_TRUE(isDatarefMissing(Parameter("S.D.P").inDataref));
    EXPECT_EQ(Type(FieldActionText, "no/command, at all"), "");
    EXPECT_EQ(Parameter("S.D.P").logic[0].executes[0].notFound, 1);
    EXPECT_EQ(Type(FieldRight, "NO.SUCH.THING"), "");
    EXPECT_TRUE(Parameter("S.D.P").hasError);
    EXPECT_EQ(Type(FieldCalculation, "[S.D.Q]+[2]flr[0]"), "");
    EXPECT_EQ(Type(FieldMax, "non"), "");
    ExpectFilesHoldTheModel();
}

// A list is compared with "==" and "!=" alone: with ">" it is 0, not the number that stood there before.
TEST_F(Editor, ARightSideLeavesNothingOfTheOneBefore) {
    Load("sys=S\ndev=D\n" + Out("P", "3") + "logic:\n[S.D.P]>[5]\ncalc=[1]\n");
    EXPECT_EQ(Type(FieldRight, "1;2"), "");
    Frame();
    EXPECT_EQ(Value("S.D.P"), 1) << "3 > 0";
    ExpectFilesHoldTheModel();
    EXPECT_EQ(Type(FieldRight, "4"), "");
    const compare_block_class &comparison = Parameter("S.D.P").logic[0].compares[0];
    EXPECT_TRUE(comparison.bList.empty() && comparison.bValue == 4.0);
}

TEST_F(Editor, OperandsNameTheirCalculationsWhateverComesBetween) {
    Load("sys=S\ndev=D\n" + Out("P") + "logic:\ncalc=[1]\ncalc=[5]\ncalc=[CBLOCK1]+[1]\n");
    EXPECT_EQ(AddCalculation({{0, 0, 0}, 0}, 0), 1);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 6);
    DeleteElement({{0, 0, 0}, 0}, 2, 0);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 1) << "0 in place of what is gone";
}

// Datarefs are published, taken back and published again as their parameters come and go.
TEST_F(Editor, PublishedDatarefsFollowUndo) {
    Load("sys=S\ndev=D\nout=P,double,,1,,,,,t/out,new,,0\n");
    const auto isPublished = [](const char *name) { return XPLMIsDataRefGood(XPLMFindDataRef(name)) == 1; };
    EXPECT_EQ(Type(FieldOutDataref, "t/other"), "");
    EXPECT_TRUE(isPublished("t/other") && !isPublished("t/out"));
    SwitchType({0, 0, 0});
    EXPECT_EQ(XPLMGetDataRefTypes(Parameter("S.D.P").outDataref.handle), xplmType_Int);
    CopyOut({0, 0, 0});
    PasteOut({0, 0, 0});
    EXPECT_TRUE(isDatarefMissing(Parameter("S.D.P2").outDataref)) << "the name is taken";
    SetField({FieldOutDataref, {{0, 0, 1}, -1}, -1, -1}, "t/third");
    EXPECT_TRUE(isPublished("t/third"));
    while (UndoEditStep()) {
    }
    EXPECT_TRUE(isPublished("t/out") && !isPublished("t/other") && !isPublished("t/third"));
}

TEST_F(Editor, KeepsTheModelWholeAndIsUndoneToTheFirstByte) {
    for (const ModelDataref &dataref : ModelDatarefs)
        simhost::PublishDataref(dataref.name, dataref.type, dataref.elements);
    Load(RandomModel(3).Text() + RandomModel(11).Text());
    const std::string first = Saved();
    RandomModel random(7);
    int done = 0;
    for (int i = 0; done < 2000 && i < 20000 && !HasFailure(); i++) {
        SCOPED_TRACE(i);
        const unsigned changes = modelChangeCount;
        EditAtRandom(random);
        if (modelChangeCount != changes) done++;
        if (random.Chance(10)) Frame(random.Chance(20) ? "go now" : "");
        if (i % 50 == 0) ExpectWhole();
        if (i % 1000 == 0) ExpectFilesHoldTheModel();
        executeFlow.clear();
    }
    EXPECT_EQ(done, 2000) << "too few operations found something to change";
    EXPECT_GT(CountUndoSteps(), 1000U);
    std::printf("%d operations changed the model, %zu steps to undo in %zu bytes\n", done, CountUndoSteps(),
                UndoBytes());
    while (UndoEditStep()) {
    }
    ExpectWhole();
    EXPECT_EQ(UndoBytes(), 0U);
    EXPECT_TRUE(Saved() == first);
}

} // namespace
