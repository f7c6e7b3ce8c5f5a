// Names and texts are few, so that what is renamed meets links that wait for its name.
#include "tests/systems/random_edits.h"

#include "systems/editor/fields.h"
#include "systems/editor/model.h"
#include "systems/editor/undo.h"
#include "systems/links.h"

namespace {

int Index(RandomModel &random, size_t count) {
    if (count == 0 || random.Chance(5)) return random.Chance(50) ? -1 : 100;
    return static_cast<int>(random.Below(static_cast<unsigned>(count)));
}

BlockPlace Place(RandomModel &random) {
    BlockPlace place;
    place.sys = Index(random, systems_vector.size());
    if (const system_class *system = SystemAt(place)) place.dev = Index(random, system->devices.size());
    if (const device_struct *device = DeviceAt(place)) place.out = Index(random, device->outs.size());
    if (const auto *parameter = ParameterAt(place)) place.block = Index(random, parameter->logic.size());
    return place;
}

std::string Text(RandomModel &random) {
    const std::string link = SysDevOut2name(Place(random));
    if (random.Chance(70) && !link.empty()) return link;
    return random.OneOf({"P0",
                         "NEW",
                         "D1",
                         "S0",
                         "S0.D0.P0",
                         "S1.D1.P1",
                         "NewSystem.NewDevice.NewOut",
                         "5",
                         "-2.5",
                         "1;2;3",
                         "t/int",
                         "t/ints[3]",
                         "t/fresh",
                         "kv/cmd",
                         "[S0.D0.P0]*[2]",
                         "[CBLOCK0]",
                         "CBLOCK1",
                         "go now",
                         "a=b",
                         "",
                         "sys=x",
                         "a;b",
                         "a,b",
                         "non"});
}

// Names are few, so that what is renamed meets links that wait for its name.
void Rename(RandomModel &random, const BlockPlace &at) {
    const int field = FieldSystemName + static_cast<int>(random.Below(3));
    SetField({field, at, 0, 0}, random.OneOf({"P0", "P1", "S0", "S1", "D0", "D1", "in_X", "S2", "D2"}));
}

void EditTree(RandomModel &random, const BlockPlace &at) {
    const bool isRoomy = systems_vector.size() < 5; // the model is kept small, so that links meet
    const bool hasRoom = SystemAt(at) && SystemAt(at)->devices.size() < 5;
    const bool isShort = DeviceAt(at) && DeviceAt(at)->outs.size() < 8;
    switch (random.Below(14)) {
    case 0: isRoomy ? void(NewSystem(at)) : DeleteOut(at); break;
    case 1: hasRoom ? void(NewDevice(at)) : SwitchSerial(at); break;
    case 2: isShort ? void(NewOut(at)) : DeleteOut(at); break;
    case 3: random.Chance(5) ? DeleteSystem(at) : SwitchSerial(at); break;
    case 4: random.Chance(10) ? DeleteDevice(at) : CopyDevice(at); break;
    case 5: CopyOut(at); break;
    case 6: isShort ? PasteOut(at) : MoveOut(at); break;
    case 7: hasRoom ? PasteDevice(at) : MoveDevice(at); break;
    case 8: hasRoom ? CloneDevice(at) : MoveDevice(at); break;
    case 9: MoveDevice(at); break;
    default: MoveOut(at); break;
    }
}

void EditBlocks(RandomModel &random, const BlockPlace &at, int i, int k) {
    switch (random.Below(19)) {
    case 0: AddBlock(at); break;
    case 1: DeleteBlock(at); break;
    case 2: AddComparison(at, i); break;
    case 3: DeleteComparison(at, i); break;
    case 4: SwitchJoin(at, i); break;
    case 5: SwitchComparator(at, i); break;
    case 6: SwitchSpeech(at, i); break;
    case 7: AddCalculation(at, i); break;
    case 8: AddElement(at, i, k); break;
    case 9: DeleteElement(at, i, k); break;
    case 10: SetOperator(at, i, k, Index(random, 7)); break;
    case 11: AddAction(at, i); break;
    case 12: DeleteAction(at, i); break;
    case 13: SetActionType(at, i, Index(random, 13)); break;
    case 14: CopyAction(at, i); break;
    case 15: PasteAction(at, i); break;
    case 16: AddPoint(at, i); break;
    case 17: DeletePoint(at, i); break;
    default:
        SwitchType(at);
        SwitchSaveOnExit(at);
        SwitchDatarefMode(at, random.Chance(50));
        break;
    }
}

} // namespace

void EditAtRandom(RandomModel &random) {
    const BlockPlace at = Place(random);
    const int item = Index(random, 2), element = Index(random, 2);
    const unsigned kind = random.Below(10);
    if (kind < 2)
        EditTree(random, at);
    else if (kind < 5)
        EditBlocks(random, at, item, element);
    else if (kind < 6)
        Rename(random, at);
    else
        SetField({static_cast<int>(random.Below(FieldPointY + 1)), at, item, element}, Text(random));
    if (random.Chance(2)) UndoEditStep();
}
