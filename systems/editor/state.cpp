// Selection and messages. The selection is indices, which editing may leave behind; they are checked before
// every drawing and click.
#include "systems/editor/state.h"

#include <algorithm>

#include "systems/editor/undo.h"
#include "systems/links.h"
#include "systems/writer.h"
#include "util/log.h"
#include "util/make_fresh.h"

EditorState editorState;

namespace {

const size_t MostVisited = 100;

void SaveAfterChange() {
    if (isAUTO) SaveModel();
}

void SetSelection(const ParameterAddress &place) {
    selection = place;
    selDrawStack = selCalc = selDraw = selPoint = -1;
    for (int list : {ListUsage, ListLogic, ListCalc, ListExecute, ListGraph}) scroll[list] = 0;
}

void GoTo(size_t index) {
    if (index >= editorState.visited.size()) return;
    editorState.visitedNow = index;
    if (ParameterAt(editorState.visited[index])) SetSelection(editorState.visited[index]);
}

void ScrollTo(int list, int row) {
    if (row < 0) return;
    scroll[list] = std::clamp(scroll[list], std::max(0, row - std::max(1, rowsSeen[list]) + 1), row);
}

template <typename Records> void Clamp(int &index, const Records &records) {
    index = std::min(index, static_cast<int>(records.size()) - 1);
}

} // namespace

void ResetEditorState() {
    MakeFresh(editorState);
    ForgetUndo();
    editorState.savedChangeCount = modelChangeCount;
    afterEdit = SaveAfterChange;
}

void SelectPlace(const ParameterAddress &place) {
    const bool isSystemSelected = place.sys == selSys;
    const bool isDeviceSelected = isSystemSelected && place.dev == selDev;
    if (isSystemSelected && (place.dev < 0 || (isDeviceSelected && (place.out < 0 || place.out == selOut))))
        return;
    if (!isSystemSelected) scroll[ListDev] = 0;
    if (!isDeviceSelected) scroll[ListOut] = 0;
    SetSelection(place);
    KeepSelectionValid();
    if (selOut < 0) return;
    editorState.visited.resize(std::min(editorState.visited.size(), editorState.visitedNow + 1));
    if (editorState.visited.size() >= MostVisited) editorState.visited.erase(editorState.visited.begin());
    editorState.visited.push_back(selection);
    editorState.visitedNow = editorState.visited.size() - 1;
}

void ScrollToSelection() {
    ScrollTo(ListSys, selSys);
    ScrollTo(ListDev, selDev);
    ScrollTo(ListOut, selOut);
    if (!BlockAt(SelectedBlock())) return;
    int row = selDrawStack; // blocks and comparisons stand below each other
    for (int block = 0; block < selDrawStack; block++)
        row += static_cast<int>(BlockAt({selection, block})->compares.size());
    const size_t comparisons = BlockAt(SelectedBlock())->compares.size();
    ScrollTo(ListLogic, row + static_cast<int>(comparisons));
    ScrollTo(ListLogic, row);
}

void GoBack() {
    if (editorState.visitedNow > 0) GoTo(editorState.visitedNow - 1);
}

void GoForward() {
    GoTo(editorState.visitedNow + 1);
}

void KeepSelectionValid() {
    if (!SystemAt(selection)) selSys = systems_vector.empty() ? -1 : 0;
    if (!DeviceAt(selection)) selDev = DeviceAt({selSys, 0}) ? 0 : -1;
    if (!ParameterAt(selection)) selOut = ParameterAt({selSys, selDev, 0}) ? 0 : -1;
    const out_parameter_struct *parameter = ParameterAt(selection);
    if (!parameter) {
        selDrawStack = selCalc = selDraw = selPoint = -1;
        return;
    }
    const std::vector<logicblock_struct> &logic = parameter->logic;
    Clamp(selDrawStack, logic);
    if (selDrawStack < 0 && !logic.empty()) selDrawStack = 0;
    const logicblock_struct *block = BlockAt(SelectedBlock());
    if (!block) return;
    Clamp(selCalc, block->calcs);
    Clamp(selPoint, block->graph);
    if (!showCalc)
        Clamp(selDraw, block->executes);
    else if (const calcBlock_struct *calculation = RecordAt(block->calcs, selCalc))
        Clamp(selDraw, calculation->stack);
    else
        selDraw = -1;
}

BlockPlace SelectedBlock() {
    return {selection, selDrawStack};
}

void Say(const std::string &message, bool isBad) {
    editorMessage = message;
    isEditorMessageBad = isBad;
}

void SaveModel() {
    if (SaveSysToTxtFile()) {
        editorState.savedChangeCount = modelChangeCount;
        Say("SAVED");
    } else {
        Say("NOT SAVED, the files are as they were: " + saveFailure, true);
    }
}

bool hasUnsavedChanges() {
    return editorState.savedChangeCount != modelChangeCount;
}
