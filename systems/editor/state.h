// What the systems editor's window shows: the selection, what is switched on, how far lists are scrolled.
#pragma once

#include <string>
#include <vector>

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

struct EditorState {
    ParameterAddress selection; // as deep as something is selected
    int block = -1;             // the logic block that is selected
    int calculation = -1;
    int item = -1;  // the calculation's element, or the action
    int point = -1; // of the graph
    int parameterPage = 0;
    int scroll[EditorLists] = {};   // the first that is seen
    int rowsSeen[EditorLists] = {}; // in the last drawing

    int showCalc = 1;                 // 1 calculations, 0 actions
    int showGraph = 1, showUsage = 1; // panels below the table
    int showKept = 0;                 // lines that were not understood, in place of the usage
    bool isShown = false;             // false: one small button
    int isAuto = 0;                   // save after every change
    std::string message;              // what the last click did, or why it did not
    bool isMessageBad = false;

    std::vector<ParameterAddress> visited; // parameters, in the order they were looked at
    size_t visitedNow = 0;
    unsigned savedChangeCount = 0; // of the model, when it was saved last

    bool isSearched = false; // for what the actions of a block name: this one's, in the model of then
    BlockPlace searched;
    unsigned searchedChangeCount = 0;
};
extern EditorState editorState;
inline ParameterAddress &selection = editorState.selection;
inline int &selSys = selection.sys, &selDev = selection.dev, &selOut = selection.out;
inline int &selDrawStack = editorState.block, &selCalc = editorState.calculation;
inline int &selDraw = editorState.item, &selPoint = editorState.point;
inline int &SysTablePage = editorState.parameterPage;
inline int (&scroll)[EditorLists] = editorState.scroll, (&rowsSeen)[EditorLists] = editorState.rowsSeen;
inline int &showCalc = editorState.showCalc, &showGraph = editorState.showGraph;
inline int &showUsage = editorState.showUsage, &showKept = editorState.showKept;
inline bool &isEditorShown = editorState.isShown;
inline int &isAUTO = editorState.isAuto;
inline std::string &editorMessage = editorState.message;
inline bool &isEditorMessageBad = editorState.isMessageBad;

// Nothing is selected, everything is saved, and nothing can be undone.
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
