// The lines of the systems files: what each one says, and how it is written. Reader, writer, editor and
// checker all ask here, so that they agree about every line. Nothing here looks at the model: a link that was
// read is its text, unresolved. The words within the lines are in tables of their own: actions in
// systems/action_kinds.h, operators in systems/operators.h, what is replaced in spoken texts in
// systems/spoken_links.h.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "systems/model.h"
#include "util/log.h"

// May begin the first system's file: it was written with the editor. Says nothing.
inline constexpr const char *EditorMark = "draw=1";

// ---- Keys ----

// A key makes a line what it is, wherever in the line it stands.
struct LineKey {
    const char *text;
    const char *form; // what follows it, and what the line is; for the table of docs/systems-files.md
    const char *item;
};

enum {
    KeySystem,
    KeyDevice,
    KeySerialDevice,
    KeyParameter,
    KeyPoint,
    KeyCalculation,
    KeyAction,
    KeySpeech,
};
inline constexpr LineKey LineKeys[] = {
    {"sys=", "name", "a new system"},
    {"dev=", "name", "a new device"},
    {"devstack=", "name", "a new device whose parameters are steps"},
    {"out=", "twelve fields", "a new parameter"},
    {"graf=", "x,y", "a point of a table"},
    {"calc=", "…", "a calculation"},
    {"execute=", "type,text,value", "an action"},
    {"instring=", "phrase", "a comparison with what the pilot said"},
}; // in their order: the first that is found in a line decides

inline constexpr const char *BlockKey = "logic:";        // the whole line
inline constexpr const char *JoinKeys[] = {"&&", "||"};  // whole lines, by joinOp
inline constexpr const char *CalculationWord = "CBLOCK"; // with a number: an operand, the result of another
inline constexpr size_t FewestFields = 10,
                        MostFields = 12; // of a parameter; text and save flag may be missing

// ---- Reading ----

// What an author can hardly have meant by a line that can be read.
struct LineRemarks {
    bool isWhole = true; // every part of the line had a use
    std::vector<std::string> list;

    void AddLoss(std::string remark) {
        isWhole = false;
        list.push_back(std::move(remark));
    }
};

// Reports them, to whoever checks the files: the log does not say so.
void ReportRemarks(const LineRemarks &remarks, const std::string &file, int line);

// By the first of the keys KeySystem to KeyParameter that is anywhere in the line.
enum class LineKind { System, Device, SerialDevice, Parameter, Body };
LineKind KindOfLine(std::string_view line);

// Adds that the key of such a line does not begin it.
void RemarkOnKey(LineKind kind, std::string_view line, LineRemarks &remarks);

// What is left of the line without the key of its kind.
std::string NameInLine(LineKind kind, std::string_view line);

// Whether the word names a type of parameters.
bool isTypeWord(std::string_view word);

// The records of such lines, with asWritten.
system_class ReadSystemLine(const std::string &line);
device_struct ReadDeviceLine(const std::string &line);

// The fields behind "out=". False, with the reason, when the parameter is none; datarefs are named, not
// bound.
bool ReadParameterFields(const std::vector<std::string_view> &fields, out_parameter_struct &parameter,
                         std::string &reason, LineRemarks &remarks);

// What a body line adds to its parameter.
struct BlockBegin {};
struct JoinLine {
    int joinOp = 0;
};
struct CalculationLine {
    calcBlock_struct calculation;
    double constant = 0.0; // the block's
};
struct UnreadableLine {
    std::string reason;
    bool isMisplaced = false; // the line could be read elsewhere
};
using BodyItem = std::variant<BlockBegin, JoinLine, graf_struct, CalculationLine, structExecute,
                              compare_block_class, UnreadableLine>;

BodyItem ReadBodyLine(const std::string &line, LineRemarks &remarks);

// Gives the record of a line its asWritten: when it does not tell all that the line says, or would be read as
// something else once it is written from the record.
void KeepAsWritten(const std::string &line, bool isWhole, BodyItem &item);
void KeepAsWritten(const std::string &line, bool isWhole, out_parameter_struct &parameter);

// The elements of the text behind "calc=". False, with the offending text in error, when a number or block
// index is none.
bool ReadCalculation(std::string_view text, std::vector<calcStack_class> &stack, std::string &error,
                     bool &isWhole);

// ---- Writing ----

// The line of a record, without its end: made from the record, or as its author wrote it where that says the
// same and more. Links that were renamed meanwhile are renamed in it.
std::string LineOf(const system_class &system);
std::string LineOf(const device_struct &device);
std::string LineOf(const out_parameter_struct &parameter);
std::string LineOf(const compare_block_class &comparison);
std::string LineOf(const calcBlock_struct &calculation, const logicblock_struct &block);
std::string LineOf(const structExecute &action);
std::string LineOf(const graf_struct &point);

// The operands and the elements as they are written, added to a text; form makes a constant's text: as in the
// files (ExactDecimal), as it is typed (ShortDecimal), or as it is shown. A list of one is still a list:
// "1;".
using NumberForm = std::string (*)(double);
std::string ShownNumber(double number); // six significant digits
void AddOperand(std::string &text, const sysLink_struct &link, double number, NumberForm form);
void AddOperand(std::string &text, const calcStack_class &element, NumberForm form);
void AddRightOperand(std::string &text, const compare_block_class &comparison, NumberForm form);
void AddElements(std::string &text, const calcBlock_struct &calculation, NumberForm form);

// "new", "exist" or nothing, by the mode of a binding.
const char *ModeWord(int mode);

// Whether the reader makes of the line what the record says, live values and line numbers aside.
bool Says(const std::string &line, const system_class &system);
bool Says(const std::string &line, const device_struct &device);
bool Says(const std::string &line, const out_parameter_struct &parameter);
bool Says(const std::string &line, const compare_block_class &comparison);
bool Says(const std::string &line, const calcBlock_struct &calculation);
bool Says(const std::string &line, const structExecute &action);
bool Says(const std::string &line, const graf_struct &point);
