// The lines of the systems files: what each one says, and how it is written. Reader, writer, editor and
// checker all ask here, so that they agree about every line. Nothing here looks at the model: a link that was
// read is its text, unresolved.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "systems/model.h"

// May begin the first system's file: it was written with the editor. Says nothing.
inline constexpr const char *EditorMark = "draw=1";

// ---- Reading ----

// By the first of the keys "sys=", "dev=", "devstack=", "out=", in this order, that is anywhere in the line.
enum class LineKind { System, Device, SerialDevice, Parameter, Body };
LineKind KindOfLine(std::string_view line);

// What is left of the line without the key of its kind.
std::string NameInLine(LineKind kind, std::string_view line);

// The records of such lines, with asWritten.
system_class ReadSystemLine(const std::string &line);
device_struct ReadDeviceLine(const std::string &line);

// The fields behind "out=". False, with the reason, when the parameter is none; datarefs are named, not
// bound.
bool ReadParameterFields(const std::vector<std::string_view> &fields, out_parameter_struct &parameter,
                         std::string &reason);

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

// isWhole: every part of the line had a use.
BodyItem ReadBodyLine(const std::string &line, bool &isWhole);

// Gives the record of a line its asWritten: when it does not tell all that the line says, or would be read as
// something else once it is written from the record.
void KeepAsWritten(const std::string &line, bool isWhole, BodyItem &item);
void KeepAsWritten(const std::string &line, out_parameter_struct &parameter);

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
