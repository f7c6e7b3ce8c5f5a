// Editing what a parameter is made of: logic blocks, comparisons, calculations, actions and graph points.
// Each is one step that can be undone; indices that name nothing change nothing. New things stand behind the
// one at index after, -1 at the end; the functions that add return the index of the new one, or -1.
#pragma once

#include "systems/model.h"

// A logic block of a parameter, or with block -1 the parameter.
struct BlockPlace : ParameterAddress {
    int block = -1;
    bool operator==(const BlockPlace &) const = default;
};

// The block, or null.
logicblock_struct *BlockAt(const BlockPlace &place);

int AddBlock(const BlockPlace &place);
void DeleteBlock(const BlockPlace &place);

int AddComparison(const BlockPlace &place, int after);
void DeleteComparison(const BlockPlace &place, int index);
void SwitchJoin(const BlockPlace &place, int index);       // "&&" or "||"
void SwitchComparator(const BlockPlace &place, int index); // "==", "!=", ">", "<", ">=", "<=" in turn
void SwitchSpeech(const BlockPlace &place, int index);     // numbers or what was said

// A calculation of one element that loads 0. Operands that name calculations behind it follow.
int AddCalculation(const BlockPlace &place, int after);
int AddElement(const BlockPlace &place, int calculation, int after);
void DeleteElement(const BlockPlace &place, int calculation, int index); // the last one with its calculation

// Whether another calculation of the block has the result of this one as an operand.
bool isResultUsed(const BlockPlace &place, int calculation);
void SetOperator(const BlockPlace &place, int calculation, int index, int oper);

int AddAction(const BlockPlace &place, int after);
void DeleteAction(const BlockPlace &place, int index);
void SetActionType(const BlockPlace &place, int index, int type);
void CopyAction(const BlockPlace &place, int index);
bool isActionCopied();
int PasteAction(const BlockPlace &place, int after);

int AddPoint(const BlockPlace &place, int after);
void DeletePoint(const BlockPlace &place, int index);

// Switches of a parameter and its device.
void SwitchType(const ParameterAddress &place); // integer or double
void SwitchSaveOnExit(const ParameterAddress &place);
void SwitchDatarefMode(const ParameterAddress &place, bool isOutput); // "CREATE" or "EXIST"
void SwitchSerial(const ParameterAddress &place);
