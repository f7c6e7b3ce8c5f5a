// What the systems editor's window shows: the selection, what is switched on, how far lists are scrolled.
#pragma once

#include <string>

#include "systems/editor/blocks.h"
#include "systems/editor/canvas.h"

const int ColourBoard = 10; // buttons, in the palette

enum EditorList {
    ListSys,
    ListDev,
    ListOut,
    ListUsage,
    ListKept,
    ListLogic,
    ListCalc,
    ListExecute,
    ListGraph,
    EditorLists
};

enum EditorAction {
    ActionNone,
    ActionSelectBlock, // block
    ActionGoToBlock,   // and scroll to it
    ActionSelectItem,  // block, item, element: of the panel that is open
    ActionSelectPoint, // item
    ActionEdit,        // field; on a double click, and what the click selects
    ActionScroll,
    ActionPage, // list, rows
    ActionNew,  // behind the selection: list says which level
    ActionDelete,
    ActionCopy,
    ActionPaste,
    ActionMove,
    ActionClone,
    ActionSave,
    ActionAuto,
    ActionUndo,
    ActionHide,
    ActionShow,
    ActionBack,
    ActionForward,
    ActionShowUsage,
    ActionShowKept,
    ActionGoToKept, // item
    ActionShowGraph,
    ActionShowCalc, // block -1: the selected one
    ActionShowExecute,
    ActionGoToUsage, // item
    ActionSwitchType,
    ActionSwitchSaveOnExit,
    ActionSwitchSerial,
    ActionSwitchInMode,
    ActionSwitchOutMode,
    ActionAddBlock,
    ActionDeleteBlock,
    ActionAddComparison,
    ActionDeleteComparison,
    ActionSwitchJoin,
    ActionSwitchComparator,
    ActionSwitchSpeech,
    ActionAddCalculation,
    ActionAddElement,
    ActionDeleteElement,
    ActionSetOperator, // value
    ActionAddAction,
    ActionDeleteAction,
    ActionCopyAction,
    ActionPasteAction,
    ActionSetActionType, // value
    ActionAddPoint,
    ActionDeletePoint,
};

extern ParameterAddress selection; // as deep as something is selected
inline int &selSys = selection.sys, &selDev = selection.dev, &selOut = selection.out;
extern int selDrawStack;          // the logic block
extern int selCalc;               // the calculation
extern int selDraw;               // its element, or the action
extern int selPoint;              // of the graph
extern int SysTablePage;          // of the parameters, from 0
extern int scroll[EditorLists];   // the first that is seen
extern int rowsSeen[EditorLists]; // in the last drawing

extern int showCalc;              // 1 calculations, 0 actions
extern int showGraph, showUsage;  // panels below the table
extern int showKept;              // lines that were not understood, in place of the usage
extern bool isEditorShown;        // false: one small button
extern int isAUTO;                // save after every change
extern std::string editorMessage; // what the last click did, or why it did not
extern bool isEditorMessageBad;

void ResetEditorState();

// Selects a place, as a click would; what is deeper than it is given becomes the first there is.
void SelectPlace(const ParameterAddress &place);

// Scrolls the columns and the logic stack to where the selection is seen.
void ScrollToSelection();
void GoBack();
void GoForward();

// Selected indices that name nothing any more become ones that do, or -1.
void KeepSelectionValid();
BlockPlace SelectedBlock();

void Say(const std::string &message, bool isBad = false);
void SaveModel();
bool hasUnsavedChanges();
