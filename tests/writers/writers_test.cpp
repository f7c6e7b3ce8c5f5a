// Every writer of files, cut at any of its calls: by a kill, also in the middle of a write, on disks with and
// without hard links, and by the failure of a single call. Afterwards each file is the old one or the new one
// and none has gone; what is loaded at the next start is all old or all new; and writing again completes it.
//
// Each point is a process of its own, forked with everything in memory that the writer needs, so that the
// kill is a real one. Points are thinned to what takes seconds; with the environment variable
// FENNIC_EVERY_CALL set all are tried, and each call with every error.
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <map>
#include <set>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "figure/acf_file.h"
#include "figure/channels.h"
#include "figure/installation.h"
#include "figure/positions.h"
#include "figure/seat.h"
#include "frame/aircraft.h"
#include "frame/settings.h"
#include "frame/shipped_files.h"
#include "systems/editor/model.h"
#include "systems/model_end.h"
#include "systems/saved_values.h"
#include "systems/writer.h"
#include "tests/systems/model_folder.h"
#include "tests/writers/file_calls.h"
#include "util/checksum.h"
#include "util/files.h"
#include "util/paths.h"
#include "voice/phrases.h"
#include "voice/speech_link.h"

namespace {

namespace fs = std::filesystem;

const int Errors[] = {EIO, ENOSPC, EMFILE, EACCES};
const int PointsOfAKind = 10; // unless all are wanted
const int FailuresTold = 3;
const int Untold = 3;                  // status of a process that kept a failure to itself
const std::string_view Kept = ".kept"; // a copy of what could not be read

bool IsLeftOver(const std::string &name) {
    return name.find("fennic-") != std::string::npos; // "….fennic-new" and its like
}

class Writers;

struct Writer {
    const char *name;
    void (*prepare)(Writers &folder); // the old files, and what is in memory
    void (*run)(Writers &folder);     // reads and writes as one session does
    bool isSet = false;               // the files belong together
    bool tellsPilot = false;          // which steps failed
};

class Writers : public ModelFolder, public testing::WithParamInterface<Writer> {
public:
    using ModelFolder::Frame;
    using PluginFolder::aircraft;
    using PluginFolder::plugin;
    using PluginFolder::root;
    using PluginFolder::write;

    void Ship(int type) {
        LoadAircraft(type);
        simhost::SetFolders(root, aircraft, "test.acf");
        ShipFigure();
        write("data/obj/acf.txt", "P _obja/0/_obj_flags 0\n\nP _obja/0/_v10_att_file_stl kvfennic.obj\n");
        const std::string above = "../../../";
        write(above + "test.acf",
              "I\r\n1200 Version\r\nP _obja/0/_v10_att_file_stl seat.obj\r\nP _obja/count 1\r\n");
        for (const char *name : {"kvfennic.obj", "kvfennic.png", "seats.obj", "seats_Std.obj"})
            write(above + "objects/" + name, std::string("the aircraft's ") + name);
    }

    void LoadChannels() {
        std::string definition;
        for (int i = 0; i < 47; i++) definition += std::to_string(i) + ",c" + std::to_string(i) + "\r\n";
        write("data/obj/fennic.txt", definition);
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
        globalGender = "w";
        globalPosFolder = "positions-w/";
        ReadPositionFolder();
    }

    // Two systems, and values of theirs that were saved.
    void WriteModel() {
        const std::string saved = "out=P,double,,1,,,,,,,,1\nlogic:\ncalc=[7]\n";
        write("systems/_systems.txt", "A\nB\nC\n");
        write("systems/A.txt", "sys=A\ndev=D\n" + saved + "dev=E\n" + Out("Q"));
        write("systems/B.txt", "sys=B\ndev=F\n" + saved);
        write("systems/C.txt", "sys=C\ndev=G\n" + Out("R"));
        write("systems/_save.txt", "A.D.P=3\r\nB.F.P=5\r\nGONE.D.P=7\r\n");
    }

protected:
    Tree before, after;
    int kills = 0, halves = 0, errors = 0, torn = 0, lost = 0, incomplete = 0, crashed = 0, untold = 0;
    std::set<Tree> seen; // what was left, and looked at

    Tree Files() const { return ReadTree(aircraft); }
    void Restore(const Tree &tree) const { RestoreTree(aircraft, Files(), tree); }

    // In a process of its own. Gives how it ended: 0, or the signal.
    template <typename Work> int InChild(const Work &work) {
        std::cout.flush();
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : -WEXITSTATUS(status);
    }

    int Run(Harm how, int call, int error, bool hasSecondNames) {
        return InChild([&] {
            HarmCalls(how, call, error, hasSecondNames);
            GetParam().run(*this);
            const bool isUntold = GetParam().tellsPilot && how == Harm::Fail && failedSteps.empty();
            if (isUntold && Files() != after) _exit(Untold);
        });
    }

    std::set<std::string> LoadedDevices() {
        std::set<std::string> devices;
        DeleteSystems();
        FinishInterruptedSave();
        CreateSystemsFromFile();
        for (const system_class &system : systems_vector)
            for (const device_struct &device : system.devices)
                devices.insert(system.name + "." + device.name + ":" + std::to_string(device.outs.size()));
        return devices;
    }

    void Tell(int &count, const std::string &what, const std::string &where) {
        if (++count <= FailuresTold) ADD_FAILURE() << where << ": " << what;
    }

    // A file of saved values may be of both times, line by line; but every line is one of them.
    static bool IsMixtureOfLines(const std::string &text, const std::string &old, const std::string &fresh) {
        const auto lines = [](const std::string &whole) {
            std::map<std::string, std::string> found;
            for (size_t at = 0, end = 0; (end = whole.find('\n', at)) != std::string::npos; at = end + 1) {
                const std::string line = whole.substr(at, end - at);
                found[line.substr(0, line.find('='))] = line;
            }
            return found;
        };
        const auto now = lines(text), one = lines(old), other = lines(fresh);
        for (const auto &[key, line] : one)
            if (!now.contains(key)) return false;
        return std::all_of(now.begin(), now.end(), [&](const auto &entry) {
            const auto is = [&](const auto &all) {
                return all.contains(entry.first) && all.at(entry.first) == entry.second;
            };
            return is(one) || is(other);
        });
    }

    void LookAtFiles(const Tree &left, const std::string &where) {
        for (const auto &[name, bytes] : left) {
            if (IsLeftOver(name)) continue;
            if (name.ends_with(Kept) && bytes == before.at(name.substr(0, name.size() - Kept.size())))
                continue;
            const bool isOld = before.contains(name) && before.at(name) == bytes;
            const bool isNew = after.contains(name) && after.at(name) == bytes;
            if (name.ends_with("shipped_files.txt")) continue; // a record, written at first and at last
            const bool isMixture =
                name.ends_with("_save.txt") && IsMixtureOfLines(bytes, before.at(name), after.at(name));
            if (!isOld && !isNew && !isMixture)
                Tell(torn, name + " is neither old nor new:\n" + bytes, where);
        }
        for (const auto &[name, bytes] : before)
            if (after.contains(name) && !left.contains(name)) Tell(lost, name + " has gone", where);
    }

    // What the next start makes of it, and the next time that it is written.
    void LookAtNextStart(const std::string &where) {
        const Tree left = Files();
        if (!seen.insert(left).second) return;
        if (GetParam().isSet) {
            const int ended = InChild([&] {
                FinishInterruptedSave();
                const Tree started = Files(); // loading and ending saves values, too
                const auto devices = LoadedDevices();
                Restore(before);
                const auto old = LoadedDevices();
                Restore(after);
                const bool isOneOfThem = devices == old || devices == LoadedDevices();
                Restore(started);
                _exit(isOneOfThem ? 0 : 1);
            });
            if (ended != 0) Tell(lost, "what is loaded is neither old nor new", where);
        }
        if (Run(Harm::None, 0, 0, true) != 0) Tell(crashed, "writing again crashed", where);
        const Tree again = Files();
        if (again == after) return;
        std::string names;
        for (const auto &[name, bytes] : again)
            if (!name.ends_with(Kept) && (!after.contains(name) || after.at(name) != bytes))
                names += " " + name;
        if (!names.empty()) Tell(incomplete, "writing again does not complete it:" + names, where);
    }

    void Try(Harm how, int call, int error, bool hasSecondNames) {
        const bool isKill = how == Harm::Kill || how == Harm::KillHalfWay;
        const std::string where =
            std::string(isKill ? how == Harm::Kill ? "kill at" : "kill half-way in" : std::strerror(error))
            + " call " + std::to_string(call) + (hasSecondNames ? "" : ", no hard links");
        Restore(before);
        const int ended = Run(how, call, error, hasSecondNames);
        if (how == Harm::KillHalfWay && ended != SIGKILL) return;
        (how == Harm::Kill ? kills : how == Harm::KillHalfWay ? halves : errors)++;
        if (ended == -Untold)
            Tell(untold, "the pilot is not told", where);
        else if (ended != (isKill ? SIGKILL : 0))
            Tell(crashed, "ended with " + std::to_string(ended), where);
        LookAtFiles(Files(), where);
        LookAtNextStart(where);
    }

    void TryAll(bool hasSecondNames) {
        Restore(before);
        Run(Harm::None, 0, 0, hasSecondNames);
        const int calls = counts->calls, writes = counts->writes;
        ASSERT_GT(calls, 5) << "no calls are counted";
        const bool isEvery = std::getenv("FENNIC_EVERY_CALL") != nullptr;
        const int stride = isEvery ? 1 : 1 + calls / PointsOfAKind;
        for (int call = 1; call <= calls; call += stride) {
            Try(Harm::Kill, call, 0, hasSecondNames);
            for (size_t i = 0; i < std::size(Errors); i++)
                if (isEvery || i == static_cast<size_t>(call / stride) % std::size(Errors))
                    Try(Harm::Fail, call, Errors[i], hasSecondNames);
        }
        for (int write = 1; write <= writes; write++) Try(Harm::KillHalfWay, write, 0, hasSecondNames);
    }
};

void SaveSystems(Writers &) {
    SaveSysToTxtFile();
}
void SetUp(Writers &) {
    SetUpThisAircraft();
}

template <int type> void ShipType(Writers &folder) {
    folder.Ship(type);
}
template <int type> void ShipAndSetUp(Writers &folder) {
    folder.Ship(type);
    SetUpThisAircraft();
}

// The plug-in was updated, and brings another figure.
template <int type> void ShipAndUpdate(Writers &folder) {
    ShipAndSetUp<type>(folder);
    for (const char *name : {"kvfennic.obj", "kvfennic.png"})
        folder.write(std::string("data/obj/") + name, std::string("the newer ") + name);
}

// The files of one version, "shipped/" in a package.
void ShipVersion(Writers &folder, const std::string &version) {
    for (const char *name : {"A", "B", "C"})
        folder.write(std::string("shipped/systems/") + name + ".txt", name + version);
    folder.write("shipped/custom/positions-w/rest/r.txt", "pose " + version);
}

// The figure is attached to the aircraft.
void ShipAndSeat(Writers &folder) {
    folder.Ship(767);
    folder.LoadChannels();
    folder.write("data/obj/acf.txt", "P _obja/0/_v10_att_file_stl kvfennic.obj\n"
                                     "P _obja/0/_v10_att_x_acf_prt_ref 1\n"
                                     "P _obja/0/_v10_att_y_acf_prt_ref 2\n"
                                     "P _obja/0/_v10_att_z_acf_prt_ref 3\n");
    SetUpThisAircraft();
}

// The author moves her from where she sits to where she is to sit, two feet to the right of the middle.
void MoveAndSaveSeat(Writers &) {
    const AttachedFigure figure = FindAttachedFigure(WhatThisAircraftAcfPath());
    if (!figure.reason.empty()) return; // the harm was done before she was seen
    const double feet = 2.0 - figure.seat.x;
    XPLMSetDataf(anim[FigureOffsetChannel].dataref[0], static_cast<float>(feet * 0.3048));
    SaveSeat();
}

const Writer AllWriters[] = {
    {"settings",
     [](Writers &folder) {
         folder.write("data/settings_win.txt", "");
         folder.write("data/settings_mac.txt", "gender=w\r\nname-w=Ada\r\nuser=Grace\r\ninstallation=2\r\n");
     },
     [](Writers &) {
         ReadSettings();
         globalVolume = 70;
         SaveSettings();
     }},
    {"saved_values", [](Writers &folder) { folder.WriteModel(); },
     [](Writers &) {
         CreateSystemsFromFile();
         Writers::Frame();
         SaveParametersValue();
     }},
    {"systems",
     [](Writers &folder) { // a device moves to another system, and there is a new one
         folder.WriteModel();
         CreateSystemsFromFile();
         CopyDevice({0, 1});
         MoveDevice({1, 0});
         NewDevice({NewSystem({2}), -1});
     },
     SaveSystems, true},
    {"seat", ShipAndSeat, MoveAndSaveSeat},
    {"shipped", [](Writers &folder) { ShipVersion(folder, "1"); },
     [](Writers &) { PutShippedFilesInPlace(); }},
    {"shipped_update",
     [](Writers &folder) { // B is the user's now, C was deleted, and D is new
         ShipVersion(folder, "1");
         PutShippedFilesInPlace();
         folder.write("systems/B.txt", "my own");
         fs::remove(folder.plugin + "systems/C.txt");
         ShipVersion(folder, "2");
         folder.write("shipped/systems/D.txt", "D2");
     },
     [](Writers &) { PutShippedFilesInPlace(); }},
    {"shipped_before_records",
     [](Writers &folder) { // an earlier version's folder, without C
         ShipVersion(folder, "2");
         for (const char *name : {"A", "B"})
             folder.write(std::string("systems/") + name + ".txt", name + std::string("1"));
         folder.write("shipped/versions.txt", TextChecksum("A1\n") + "\tsystems\tA.txt\n"
                                                  + TextChecksum("B1\n") + "\tsystems\tB.txt\n"
                                                  + TextChecksum("C1\n") + "\tsystems\tC.txt\n");
     },
     [](Writers &) { PutShippedFilesInPlace(); }},
    {"position",
     [](Writers &folder) {
         folder.LoadChannels();
         folder.write("custom/positions-w/any.txt", "0,c0,1,2,3,\r\n");
     },
     [](Writers &) { SavePosition("any"); }},
    {"preset",
     [](Writers &folder) {
         folder.LoadChannels();
         SavePresetLeftToFile();
         simhost::SetNumber("kv/fo/c5_x", 5);
     },
     [](Writers &) { SavePresetLeftToFile(); }},
    {"context",
     [](Writers &folder) {
         CreateSpeechDatarefs();
         folder.write("data/context.txt", "OLD\r\n");
     },
     [](Writers &) { MakeStrokaFromText("new phrase", AddAndTellServer); }},
    {"channels",
     [](Writers &folder) { folder.LoadChannels(), folder.write("data/obj/fennic.txt", "0,old\r\n"); },
     [](Writers &) { SaveAnimationFile(); }},
    {"copy",
     [](Writers &folder) {
         folder.write("from.txt", std::string(150'000, 'n'));
         folder.write("to.txt", std::string(100'000, 'o'));
     },
     [](Writers &folder) { copyFile(folder.plugin + "from.txt", folder.plugin + "to.txt"); }},
    {"set_up_319", ShipType<319>, SetUp, false, true},
    {"set_up_737", ShipType<737>, SetUp, false, true},
    {"set_up_767", ShipType<767>, SetUp, false, true},
    {"set_up_again_319", ShipAndUpdate<319>, SetUp, false, true},
    {"set_up_again_767", ShipAndUpdate<767>, SetUp, false, true},
    {"uninstall_319", ShipAndSetUp<319>, [](Writers &) { UninstallFromAcf(); }, false, true},
    {"uninstall_737", ShipAndSetUp<737>, [](Writers &) { UninstallFromAcf(); }, false, true},
    {"uninstall_767", ShipAndSetUp<767>, [](Writers &) { UninstallFromAcf(); }, false, true},
};

void PrintTo(const Writer &writer, std::ostream *out) {
    *out << writer.name;
}

TEST_P(Writers, LeaveOldOrNewFilesWhereverTheyEnd) {
    GetParam().prepare(*this);
    before = Files();
    ASSERT_EQ(Run(Harm::None, 0, 0, true), 0);
    after = Files();
    ASSERT_NE(before, after) << "nothing is written";
    const bool usesLinks = counts->links > 0;
    TryAll(true);
    if (usesLinks) TryAll(false);
    std::cout << GetParam().name << ": " << kills << " kill points, " << halves << " half writes, " << errors
              << " injected errors: lost " << lost << ", torn " << torn << ", incomplete " << incomplete
              << ", crashed " << crashed << ", untold " << untold << "\n";
    if (lost + torn + incomplete + crashed + untold > FailuresTold) ADD_FAILURE() << "and more";
}

INSTANTIATE_TEST_SUITE_P(, Writers, testing::ValuesIn(AllWriters),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
