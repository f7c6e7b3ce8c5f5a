// Calculations, comparisons and graphs as an author writes them and a frame evaluates them.

#include <cmath>

#include "systems/graph.h"
#include "systems/model_end.h"
#include "tests/systems/model_folder.h"

namespace {

class Calculation : public ModelFolder {
protected:
    // The value of a parameter that starts at 7 and has one block of these lines, after one frame.
    double Result(const std::string &lines) {
        DeleteSystems();
        Load("sys=S\ndev=D\n" + Out("A", "10") + Out("B", "0") + Out("C", "2")
             + "out=P,double,,7,,,,,,,,0\nlogic:\n" + lines + Out("LATER", "3"));
        Frame();
        return Value("S.D.P");
    }

    // Whether a comparison line is true.
    bool isTrue(const std::string &line) { return Result(line + "\ncalc=[100]\n") == 100; }
};

TEST_F(Calculation, FromLeftToRight) {
    const struct {
        const char *lines;
        double expected;
    } rows[] = {
        {"calc=[5]\n", 5},
        {"calc=5\n", 5},
        {"calc=-0.5\n", -0.5},
        {"calc=\n", 0},
        {"calc=five\n", 0},
        {"calc=+[1]\n", 8},
        {"calc=[S.D.A]+[S.D.C]*[2]\n", 24},
        {"calc=[S.D.A]/[S.D.B]\n", 0},
        {"calc=[S.D.A]/[4]flr[0]\n", 2},
        {"calc=[-2.5]flr[0]\n", -3},
        {"calc=[101]b2i[9]\n", 5},
        {"calc=[1100.9]b2i[]\n", 12},
        {"calc=[-101]b2i[0]\n", -5},
        {"calc=[1021]b2i[0]\n", 2},
        {"calc=[7]b2i[0]\n", 0},
        {"calc=[1]^[9]\n", 9}, // no operator: a load
        {"calc=[1] +[9]\n", 9},
        {"calc=[S.D.NONE]+[1]\n", 1},
        {"calc=[2]\ncalc=[CBLOCK0]*[CBLOCK0]+[S.D.P]\n", 11},
        {"calc=[2]\ncalc=+[1]\ncalc=[CBLOCK0]-[CBLOCK1]\n", -6}, // each starts from the parameter's value
        {"calc=[2]\ncalc=[CBLOCK1]+[CBLOCK3]+[1]\n", 1},
        {"calc=3\ncalc=[2]\ncalc=[CBLOCK0]+[5]\n", 7}, // a bare number gives no result to others
        {"calc=[1.2.3]\ncalc=[4]\n", 4},               // dropped, with a log line
        {"calc=[CBLOCKx]\ncalc=[4]\n", 4},
        {"calc=[3]tail\n", 3},
        {"graf=0,5\ngraf=1,6\n", 7},        // a graph without a calculation does nothing
        {"calc=[S.D.P]+[S.D.LATER]\n", 10}, // itself, and one that stands behind it
    };
    for (const auto &row : rows) EXPECT_EQ(Result(row.lines), row.expected) << row.lines;
    const std::string huge(300, '9');
    EXPECT_TRUE(std::isinf(Result("calc=[" + huge + "]*[" + huge + "]\n")));
    EXPECT_TRUE(std::isnan(Result("calc=[" + huge + "]*[" + huge + "]\ncalc=[CBLOCK0]-[CBLOCK0]\n")));
}

TEST_F(Calculation, Comparisons) {
    const struct {
        const char *line;
        bool expected;
    } rows[] = {
        {"[S.D.A]==[10]", true},
        {"[S.D.A]>=[10]", true},
        {"[S.D.A]<=[9.9]", false},
        {"[S.D.A]!=[10]", false},
        {"[9]<[S.D.A]", true},
        {"[S.D.A]>[S.D.C]", true},
        {"[S.D.NONE]==[0]", true}, // what is missing reads 0
        {"[S.D]==[0]", true},
        {"[S.D.C]==[1;2;3]", true},
        {"[S.D.C]!=[1;2;3]", false},
        {"[2.5]==[1;2;3]", false},
        {"[2.5]!=[1;2;3]", true},
        {"[S.D.C]>[1;2]", true}, // the list counts as 0
        {"[S.D.C]==[x;2;]", true},
        {"[S.D.B]==[;]", true}, // nothing listed: compared with 0
        {"[2],[2]", true},
        {"[2]==[2],[3]", true},
        {"||\n[1]==[2]", true}, // "or" behind nothing is true
        {"[1]==[1]\n||\n[1]==[2]\n&&\n[1]==[1]", true},
        {"[1]==[2]\n&&\n[1]==[2]\n||\n[1]==[1]", true},
        {"[1]==[1]\n||\n[1]==[2]\n[1]==[2]", true}, // the join stays until changed
        {"[1]==[1]\n[1]==[2]", false},
        {"[1]==[2]\n||\n[1]==[2]\nlogic:\n[1]==[2]", false}, // but not in the next block
        {"instring=any", false},
    };
    for (const auto &row : rows) EXPECT_EQ(isTrue(row.line), row.expected) << row.line;
}

TEST(Graph, Lookup) {
    const std::vector<GraphPoint> line = {{0, 0}, {10, 100}};
    const std::vector<GraphPoint> step = {{0, 0}, {5, 10}, {5, 20}, {10, 30}};
    const std::vector<GraphPoint> unordered = {{0, 1}, {8, 2}, {4, 3}, {10, 4}};
    const std::vector<GraphPoint> backwards = {{10, 1}, {0, 2}};
    const std::vector<GraphPoint> allEqual = {{5, 1}, {5, 2}};
    const struct {
        const std::vector<GraphPoint> &points;
        double x, expected;
    } rows[] = {{line, 5, 50},
                {line, -3, 0},
                {line, 12, 100},
                {step, 5, 20},
                {step, 4, 8},
                {step, 7.5, 25},
                {unordered, 4, 1.5},
                {unordered, 9, 23.0 / 6},
                {unordered, 8, 11.0 / 3},
                {backwards, 5, 1},
                {backwards, 11, 2},
                {allEqual, 5, 1},
                {allEqual, 6, 2},
                {{}, 1, 0},
                {line, NAN, 0},
                {line, INFINITY, 100}};
    for (const auto &row : rows) {
        EXPECT_DOUBLE_EQ(LookUpUnordered(row.points, row.x), row.expected) << row.x;
        for (size_t last = 0; last < 5 && isAscending(row.points); last++) {
            size_t segment = last;
            EXPECT_DOUBLE_EQ(LookUpAscending(row.points, row.x, segment), row.expected) << row.x;
        }
    }
}

TEST_F(Calculation, AGraphNeedsTwoPoints) {
    EXPECT_EQ(Result("calc=[5]\ngraf=0,50\n"), 5);
    EXPECT_EQ(Result("calc=[5]\ngraf=0,50\ngraf=10,60\n"), 55);
}

} // namespace
