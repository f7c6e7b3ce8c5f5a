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
#include "util/numbers.h"

namespace {

BlockPlace PlaceOf(const click_zone_class &zone) {
    return {zone.context[ZoneSys], zone.context[ZoneDev], zone.context[ZoneOut], zone.context[ZoneBlock]};
}

FieldPlace FieldOf(const click_zone_class &zone) {
    return {zone.context[ZoneField], PlaceOf(zone), zone.context[ZoneItem], zone.context[ZoneElement]};
}

// Whether what is selected in a column was deleted, or what it stands in.
bool isDeletedPlace(int list = ListOut) {
    if (!isSystem(selSys)) return false;
    if (systems_vector[static_cast<size_t>(selSys)].deleted) return true;
    if (list == ListSys) return false;
    if (isDevice(selSys, selDev) && DeviceAt(selSys, selDev).deleted) return true;
    return list == ListOut && isParameter(selSys, selDev, selOut)
           && ParameterAt(selSys, selDev, selOut).deleted;
}

// ---- The table ----

void New(int list) {
    if (list == ListSys) {
        SelectPlace(NewSystem(selSys), -1, -1);
    } else if (list == ListDev) {
        const int dev = NewDevice(selSys, selDev);
        dev < 0 ? Say("a device needs a system", true) : SelectPlace(selSys, dev, -1);
    } else {
        const int out = NewOut(selSys, selDev, selOut);
        out < 0 ? Say("a parameter needs a device", true) : SelectPlace(selSys, selDev, out);
    }
}

void Delete(int list) {
    const bool isThere = list == ListSys   ? isSystem(selSys)
                         : list == ListDev ? isDevice(selSys, selDev)
                                           : isParameter(selSys, selDev, selOut);
    if (!isThere || isDeletedPlace(list)) {
        Say(isThere ? "this was deleted before" : "there is nothing to delete", true);
        return;
    }
    const int dev = list == ListSys ? -1 : selDev, out = list == ListOut ? selOut : -1;
    const std::string users = UsersOutside(selSys, dev, out);
    if (list == ListSys) DeleteSystem(selSys);
    if (list == ListDev) DeleteDevice(selSys, selDev);
    if (list == ListOut) DeleteOut(selSys, selDev, selOut);
    if (!users.empty() && !isEditorMessageBad) // which would be that it could not be saved
        Say("DELETED, though it is used by " + users + "; UNDO takes it back", true);
}

void Copy(int list) {
    if (list == ListDev ? !isDevice(selSys, selDev) : !isParameter(selSys, selDev, selOut))
        Say("there is nothing to copy", true);
    if (list == ListDev && isDevice(selSys, selDev)) {
        CopyDevice(selSys, selDev);
        Say("COPIED " + CopiedDeviceName());
    }
    if (list == ListOut && isParameter(selSys, selDev, selOut)) {
        CopyOut(selSys, selDev, selOut);
        Say("COPIED " + OutParameterSysLinkCopy.name);
    }
}

// After pasting and moving the new place is selected.
void GoToNew(int list, int index, const char *refusal) {
    if (index < 0)
        Say(refusal, true);
    else
        list == ListDev ? SelectPlace(selSys, index, -1) : SelectPlace(selSys, selDev, index);
}

void Paste(int list) {
    if (list == ListDev ? !isDeviceCopied() : !isOutCopied()) {
        Say("nothing was copied: select it, and COPY", true);
        return;
    }
    const int index = list == ListDev ? PasteDevice(selSys, selDev) : PasteOut(selSys, selDev, selOut);
    GoToNew(list, index, list == ListDev ? "a device needs a system" : "a parameter needs a device");
}

void Move(int list) {
    const int index = list == ListDev ? MoveDevice(selSys, selDev) : MoveOut(selSys, selDev, selOut);
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
    if (index < 0 || static_cast<size_t>(index) >= usageVector.size()) return;
    const out_usage_struct usage = usageVector[static_cast<size_t>(index)];
    SelectPlace(usage.place.sys, usage.place.dev, usage.place.out);
    selDrawStack = usage.place.block;
    if (usage.kind != UsedInComparison) showCalc = usage.kind == UsedInCalculation;
    if (usage.kind == UsedInCalculation) selCalc = usage.item;
    if (usage.kind == UsedInCalculation) selDraw = usage.element;
    if (usage.kind == UsedInText) selDraw = usage.item;
    ScrollToSelection();
}

// Goes to what the line stands in, and tells all of it.
void GoToKept(int index) {
    if (index < 0 || static_cast<size_t>(index) >= KeptPlaces().size()) return;
    const KeptPlace kept = KeptPlaces()[static_cast<size_t>(index)];
    if (isSystem(kept.place.sys)) SelectPlace(kept.place.sys, kept.place.dev, kept.place.out);
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
    if (zone.context[ZoneItem] < 0) {
        selPoint = zone.context[ZoneValue];
    } else if (showCalc) {
        selCalc = zone.context[ZoneItem];
        selDraw = zone.context[ZoneElement];
    } else {
        selDraw = zone.context[ZoneItem];
    }
}

// One click selects what the field belongs to, two open it.
void Edit(const click_zone_class &zone, bool isDouble) {
    const FieldPlace field = FieldOf(zone);
    if (field.field <= FieldName) SelectPlace(field.place.sys, field.place.dev, field.place.out);
    if (field.place.block >= 0) selDrawStack = field.place.block;
    if (field.field == FieldOperand || field.field == FieldCalculation || field.field == FieldActionText
        || field.field == FieldActionValue)
        SelectItem(zone);
    if (field.field == FieldPointX || field.field == FieldPointY) selPoint = field.item;
    if (!isDouble) {
        if (field.field >= FieldUnit) Say("a double click edits it");
        return;
    }
    if (isDeletedPlace())
        Say("this was deleted", true);
    else
        EditWidgetCreate(field, zone.area);
}

void ChangePage(const click_zone_class &zone) {
    int &first = scroll[zone.context[ZoneList]];
    first = std::max(0, first + zone.context[ZoneValue] * zone.context[ZoneItem]);
}

// Clicks that show something; false when the action is none of them.
bool Show(const click_zone_class &zone, bool isDouble) {
    const int block = zone.context[ZoneBlock];
    switch (zone.context[ZoneAction]) {
    case ActionEdit: Edit(zone, isDouble); return true;
    case ActionSelectBlock: selDrawStack = block; return true;
    case ActionSelectItem: SelectItem(zone); return true;
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
    case ActionGoToKept: GoToKept(zone.context[ZoneItem]); return true;
    case ActionShowGraph: showGraph = !showGraph; return true;
    case ActionShowCalc: ShowPanel(1, block); return true;
    case ActionShowExecute: ShowPanel(0, block); return true;
    case ActionGoToUsage: GoToUsage(zone.context[ZoneItem]); return true;
    case ActionCopy: Copy(zone.context[ZoneList]); return true;
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
    if (list == ListSys || !isSystem(selSys)) return false;
    if (systems_vector[static_cast<size_t>(selSys)].deleted) return true;
    return list == ListOut && isDevice(selSys, selDev) && DeviceAt(selSys, selDev).deleted;
}

// Clicks that change the tree.
bool ChangeTree(const click_zone_class &zone) {
    const int list = zone.context[ZoneList];
    const int action = zone.context[ZoneAction];
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
    case ActionClone: GoToNew(ListDev, CloneDevice(selSys, selDev), "there is no device to clone"); break;
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
        Say("DELETED, though other calculations used CBLOCK" + int2string(calculation)
                + ": they have 0 instead; UNDO takes it back",
            true);
}

// Clicks that change the selected parameter.
void ChangeParameter(const click_zone_class &zone) {
    const BlockPlace place = PlaceOf(zone);
    const int item = zone.context[ZoneItem], element = zone.context[ZoneElement];
    const int value = zone.context[ZoneValue];
    if (place.block >= 0) selDrawStack = place.block;
    switch (zone.context[ZoneAction]) {
    case ActionSwitchType: SwitchType(place); break;
    case ActionSwitchSaveOnExit: SwitchSaveOnExit(place); break;
    case ActionSwitchSerial: SwitchSerial(place.sys, place.dev); break;
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
        SetOperator(place, item, element, value);
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
        SetActionType(place, item, value);
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
        if (isDeletedPlace())
            Say("this was deleted", true);
        else
            ChangeParameter(zone);
    }
    KeepSelectionValid();
}
