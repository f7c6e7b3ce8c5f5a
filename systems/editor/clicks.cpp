// The table from a zone's action to the operation on the model. What was deleted is looked at, not edited.
#include "systems/editor/clicks.h"

#include <algorithm>

#include "systems/editor/edit_box.h"
#include "systems/editor/kept.h"
#include "systems/editor/model.h"
#include "systems/editor/panels.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/editor/usage.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "util/numbers.h"

namespace {

// The selection down to a column.
ParameterAddress SelectionOf(int list) {
    return {selSys, list == ListSys ? -1 : selDev, list == ListOut ? selOut : -1};
}

// Whether what stands at a place was deleted, or what it stands in.
bool isDeleted(const ParameterAddress &place) {
    const system_class *system = SystemAt(place);
    const device_struct *device = DeviceAt(place);
    const out_parameter_struct *parameter = ParameterAt(place);
    return (system && system->deleted) || (device && device->deleted) || (parameter && parameter->deleted);
}

// ---- The table ----

void New(int list) {
    if (list == ListSys) {
        SelectPlace({NewSystem(selection)});
    } else if (list == ListDev) {
        const int dev = NewDevice(selection);
        dev < 0 ? Say("a device needs a system", true) : SelectPlace({selSys, dev});
    } else {
        const int out = NewOut(selection);
        out < 0 ? Say("a parameter needs a device", true) : SelectPlace({selSys, selDev, out});
    }
}

void Delete(int list) {
    const ParameterAddress place = SelectionOf(list);
    const bool hasSelection = (list == ListSys && SystemAt(place)) || (list == ListDev && DeviceAt(place))
                              || (list == ListOut && ParameterAt(place));
    if (!hasSelection || isDeleted(place)) {
        Say(hasSelection ? "this was deleted before" : "there is nothing to delete", true);
        return;
    }
    const std::string users = UsersOutside(place);
    if (list == ListSys) DeleteSystem(place);
    if (list == ListDev) DeleteDevice(place);
    if (list == ListOut) DeleteOut(place);
    if (!users.empty() && !isEditorMessageBad) // which would be that it could not be saved
        Say("DELETED, though it is used by " + users + "; UNDO takes it back", true);
}

void Copy(int list) {
    if (list == ListDev && DeviceAt(selection)) {
        CopyDevice(selection);
        Say("COPIED " + CopiedDeviceName());
    } else if (list == ListOut && ParameterAt(selection)) {
        CopyOut(selection);
        Say("COPIED " + OutParameterSysLinkCopy.name);
    } else {
        Say("there is nothing to copy", true);
    }
}

// After pasting and moving the new place is selected.
void GoToNew(int list, int index, const char *refusal) {
    if (index < 0)
        Say(refusal, true);
    else
        list == ListDev ? SelectPlace({selSys, index}) : SelectPlace({selSys, selDev, index});
}

void Paste(int list) {
    if (list == ListDev ? !isDeviceCopied() : !isOutCopied()) {
        Say("nothing was copied: select it, and COPY", true);
        return;
    }
    const int index = list == ListDev ? PasteDevice(selection) : PasteOut(selection);
    GoToNew(list, index, list == ListDev ? "a device needs a system" : "a parameter needs a device");
}

void Move(int list) {
    const int index = list == ListDev ? MoveDevice(selection) : MoveOut(selection);
    GoToNew(list, index, "first COPY what is to be moved; then select what it is to stand behind");
}

void Undo() {
    const char *name = UndoEditStep();
    if (!name)
        Say("nothing to undo");
    else if (!isEditorMessageBad) // which would be that it could not be saved
        Say(std::string("UNDONE: ") + name);
    KeepSelectionValid();
}

// ---- Panels ----

void GoToUsage(int index) {
    const out_usage_struct *found = RecordAt(usageVector, index);
    if (!found) return;
    const out_usage_struct usage = *found;
    SelectPlace(usage.place);
    selDrawStack = usage.place.block;
    if (usage.kind != UsedInComparison) showCalc = usage.kind == UsedInCalculation;
    if (usage.kind == UsedInCalculation) selCalc = usage.item;
    if (usage.kind == UsedInCalculation) selDraw = usage.element;
    if (usage.kind == UsedInText) selDraw = usage.item;
    ScrollToSelection();
}

// Goes to what the line stands in, and tells all of it.
void GoToKept(int index) {
    const KeptPlace *found = RecordAt(KeptPlaces(), index);
    if (!found) return;
    const KeptPlace kept = *found;
    if (SystemAt(kept.place)) SelectPlace(kept.place);
    if (kept.place.block >= 0) selDrawStack = kept.place.block;
    ScrollToSelection();
    Say("line " + int2string(kept.line) + ", " + kept.reason + ": " + kept.text, true);
}

void ShowPanel(int isCalc, int block) {
    showCalc = isCalc;
    if (block >= 0) selDrawStack = block;
    selDraw = selCalc = -1;
}

void SelectItem(const click_zone_class &zone) {
    if (showCalc) {
        selCalc = zone.item;
        selDraw = zone.element;
    } else {
        selDraw = zone.item;
    }
}

// One click selects what the field belongs to, two open it.
void Edit(const click_zone_class &zone, bool isDouble) {
    const FieldPlace field = {zone.field, zone.place, zone.item, zone.element};
    if (field.field <= FieldName) SelectPlace(field.place);
    if (field.place.block >= 0) selDrawStack = field.place.block;
    if (field.field == FieldOperand || field.field == FieldCalculation || field.field == FieldActionText
        || field.field == FieldActionValue)
        SelectItem(zone);
    if (field.field == FieldPointX || field.field == FieldPointY) selPoint = field.item;
    if (!isDouble) {
        if (field.field >= FieldUnit) Say("a double click edits it");
        return;
    }
    if (isDeleted(selection))
        Say("this was deleted", true);
    else
        EditWidgetCreate(field, zone.area);
}

void ChangePage(const click_zone_class &zone) {
    scroll[zone.list] = std::max(0, scroll[zone.list] + zone.rows);
}

// Clicks that show something; false when the action is none of them.
bool Show(const click_zone_class &zone, bool isDouble) {
    const int block = zone.place.block;
    switch (zone.action) {
    case ActionEdit: Edit(zone, isDouble); return true;
    case ActionSelectBlock: selDrawStack = block; return true;
    case ActionSelectItem: SelectItem(zone); return true;
    case ActionSelectPoint: selPoint = zone.item; return true;
    case ActionPage: ChangePage(zone); return true;
    case ActionShow: isEditorShown = true; return true;
    case ActionHide: isEditorShown = false; return true;
    case ActionGoToBlock:
        selDrawStack = block;
        ScrollToSelection();
        return true;
    case ActionBack:
        GoBack();
        ScrollToSelection();
        return true;
    case ActionForward:
        GoForward();
        ScrollToSelection();
        return true;
    case ActionShowUsage:
        showUsage = showKept || !showUsage;
        showKept = 0;
        return true;
    case ActionShowKept: showKept = !showKept; return true;
    case ActionGoToKept: GoToKept(zone.item); return true;
    case ActionShowGraph: showGraph = !showGraph; return true;
    case ActionShowCalc: ShowPanel(1, block); return true;
    case ActionShowExecute: ShowPanel(0, block); return true;
    case ActionGoToUsage: GoToUsage(zone.item); return true;
    case ActionCopy: Copy(zone.list); return true;
    case ActionSave: SaveModel(); return true;
    case ActionUndo: Undo(); return true;
    case ActionAuto:
        isAUTO = !isAUTO;
        Say(isAUTO ? "every change is saved" : "changes wait for SAVE");
        return true;
    default: return false;
    }
}

// Whether what a new record of the list would stand in was deleted.
bool isDeletedAbove(int list) {
    return list != ListSys && isDeleted(SelectionOf(list == ListOut ? ListDev : ListSys));
}

// Clicks that change the tree.
bool ChangeTree(const click_zone_class &zone) {
    const int list = zone.list, action = zone.action;
    const bool adds =
        action == ActionNew || action == ActionPaste || action == ActionMove || action == ActionClone;
    if (adds && isDeletedAbove(list)) {
        Say("what this would stand in was deleted", true);
        return true;
    }
    switch (action) {
    case ActionNew: New(list); break;
    case ActionDelete: Delete(list); return true;
    case ActionPaste: Paste(list); break;
    case ActionMove: Move(list); break;
    case ActionClone: GoToNew(ListDev, CloneDevice(selection), "there is no device to clone"); break;
    default: return false;
    }
    ScrollToSelection();
    return true;
}

void DeleteElementOf(const BlockPlace &place, int calculation, int element) {
    const size_t calculations = BlockAt(place) ? BlockAt(place)->calcs.size() : 0;
    const bool isUsed = isResultUsed(place, calculation);
    DeleteElement(place, calculation, element);
    const bool isGone = BlockAt(place) && BlockAt(place)->calcs.size() < calculations;
    if (isUsed && isGone && !isEditorMessageBad)
        Say(std::string("DELETED, though other calculations used ") + CalculationWord
                + int2string(calculation) + ": they have 0 instead; UNDO takes it back",
            true);
}

// Clicks that change the selected parameter.
void ChangeParameter(const click_zone_class &zone) {
    const BlockPlace &place = zone.place;
    const int item = zone.item, element = zone.element;
    if (place.block >= 0) selDrawStack = place.block;
    switch (zone.action) {
    case ActionSwitchType: SwitchType(place); break;
    case ActionSwitchSaveOnExit: SwitchSaveOnExit(place); break;
    case ActionSwitchSerial: SwitchSerial(place); break;
    case ActionSwitchInMode: SwitchDatarefMode(place, false); break;
    case ActionSwitchOutMode: SwitchDatarefMode(place, true); break;
    case ActionAddBlock:
        selDrawStack = AddBlock(place);
        ScrollToSelection();
        break;
    case ActionDeleteBlock: DeleteBlock(place); break;
    case ActionAddComparison: AddComparison(place, item); break;
    case ActionDeleteComparison: DeleteComparison(place, item); break;
    case ActionSwitchJoin: SwitchJoin(place, item); break;
    case ActionSwitchComparator: SwitchComparator(place, item); break;
    case ActionSwitchSpeech: SwitchSpeech(place, item); break;
    case ActionAddCalculation:
        selCalc = AddCalculation(place, item);
        selDraw = 0;
        break;
    case ActionAddElement:
        selCalc = item;
        selDraw = AddElement(place, item, element);
        break;
    case ActionDeleteElement: DeleteElementOf(place, item, element); break;
    case ActionSetOperator:
        if (item < 0 || element < 0) Say("first click the operator that is to change", true);
        SetOperator(place, item, element, zone.value);
        break;
    case ActionAddAction: selDraw = AddAction(place, item); break;
    case ActionDeleteAction: DeleteAction(place, item); break;
    case ActionCopyAction:
        if (item < 0) Say("first click the action that is to be copied", true);
        CopyAction(place, item);
        break;
    case ActionPasteAction:
        if (isActionCopied())
            selDraw = PasteAction(place, item);
        else
            Say("nothing was copied: click an action, and COPY", true);
        break;
    case ActionSetActionType:
        if (item < 0) Say("first click the action that is to change", true);
        SetActionType(place, item, zone.value);
        break;
    case ActionAddPoint: selPoint = AddPoint(place, item); break;
    case ActionDeletePoint:
        if (item < 0) Say("first click the point that is to go", true);
        DeletePoint(place, item);
        break;
    default: break;
    }
}

} // namespace

void ClickZone(const click_zone_class &zone, bool isDouble) {
    Say("");
    KeepSelectionValid();
    if (Show(zone, isDouble)) return;
    if (!ChangeTree(zone)) {
        if (isDeleted(selection))
            Say("this was deleted", true);
        else
            ChangeParameter(zone);
    }
    KeepSelectionValid();
}
