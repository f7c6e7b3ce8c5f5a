// Each reader's file lies in a plug-in's folder of its own, where the reader expects it; after each input
// what it left is taken away. The folder stays behind after a crash, with the input in it.
#include "tests/fuzz/readers.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>

#include "figure/acf_file.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/dataref_list.h"
#include "figure/installation.h"
#include "figure/positions.h"
#include "figure/switch_places.h"
#include "frame/aircraft.h"
#include "frame/aircraft_detection.h"
#include "frame/aircraft_list.h"
#include "frame/datarefs.h"
#include "frame/settings.h"
#include "gfx/fonts.h"
#include "gfx/textures.h"
#include "simhost/drawing/object_animation.h"
#include "simhost/drawing/object_file.h"
#include "simhost/drawing/screen.h"
#include "simhost/world/aircraft_folder.h"
#include "simhost/world/simulator_lists.h"
#include "systems/import/clist_import.h"
#include "systems/model_end.h"
#include "systems/saved_values.h"
#include "systems/writer.h"
#include "tests/systems/model_folder.h"
#include "util/files.h"
#include "voice/executer.h"
#include "voice/phrases.h"
#include "voice/push_to_talk.h"
#include "voice/speech_link.h"

namespace fs = std::filesystem;

// In place of the system's: nothing here must outlast a loss of power, and inputs come by the thousand.
extern "C" int fsync(int) {
    return 0;
}

const std::vector<Reader> Readers = {
    {"settings", "data", "settings_mac.txt"},
    {"aircraft_list", "aircraft/any", "aircraft.txt"},
    {"systems", "aircraft/Cessna_172SP", ".txt"},
    {"systems_list", "aircraft/Cessna_172SP", "_systems.txt"},
    {"saved_values", nullptr, nullptr},
    {"clist", nullptr, nullptr},
    {"position", "custom/positions-w", ".txt"},
    {"preset", "custom/presets", ".txt"},
    {"switch_places", "custom", "places.txt"},
    {"channels", "data/obj", "fennic.txt"},
    {"figure_object", "data/obj", "seats.obj"},
    {"font", "data/fnt", ".fnt"},
    {"picture", "data/png", ".png"},
    {"acf", "aircraft", ".acf"},
    {"acf_object", "data/obj", "acf.txt"},
    {"voice_list", "data", "voicelist_mac.txt"},
    {"phrase", nullptr, nullptr},
    {"message", nullptr, nullptr},
    {"spoken_text", nullptr, nullptr},
    {"host_object", "data/obj", "seats.obj"},
    {"host_aircraft", "aircraft", ".acf"},
    {"host_datarefs", nullptr, nullptr},
    {"host_commands", nullptr, nullptr},
};

namespace {

// Parameters that are saved, an answer that is waited for, and every type of spoken placeholder's source.
const char *const SmallModel =
    "sys=S\ndev=D\nout=P,double,,1,,,,,,,,1\nout=Q,int,,2,,,,,,,,1\nlogic:\ninstring=go\ncalc=[S.D.P]+[1]\n"
    "execute=0,say [S.D.P],0\n";

class Folder : public ModelFolder {
public:
    void TestBody() override {}

    std::string Path(const std::string &name) const { return plugin + name; }
    void Write(const std::string &name, const std::string &bytes) { write(name, bytes); }

    void RunFrames() {
        for (int i = 0; i < 3; i++) {
            Frame(i == 1 ? "go" : "");
            if (!executeFlow.empty()) VarToString(executeFlow.front().text);
            executeFlow.clear();
        }
    }

    // Reads the model, runs it, writes it, and ends.
    void RunModel() {
        CreateSystemsFromFile();
        RunFrames();
        SaveSysToTxtFile();
        SaveParametersValue();
        DeleteSystems();
        for (const char *rest : {"systems", "sys.txt"}) fs::remove_all(plugin + rest);
        fs::create_directories(plugin + "systems");
    }

    void ShipFile(const std::string &name) {
        fs::copy_file(std::string(SOURCES) + name, plugin + name, fs::copy_options::overwrite_existing);
    }

    void Settings(const std::string &bytes) {
        write("data/settings_win.txt", "");
        write("data/settings_mac.txt", bytes);
        ReadSettings();
        SaveSettings();
    }

    void SystemsList(const std::string &bytes) {
        write("systems/A.txt", SmallModel);
        write("systems/_systems.txt", bytes);
        RunModel();
    }

    void SavedValues(const std::string &bytes) {
        write("sys.txt", SmallModel);
        write("systems/_save.txt", bytes);
        RunModel();
    }

    // What is made of checklists can be read: a note without a line would say that it cannot.
    static void Clist(const std::string &bytes) {
        const ClistImport import = ImportClist(bytes, {});
        for (const ClistNote &note : import.notes)
            if (note.line == 0) throw std::runtime_error(note.text);
    }

    void Pose(const std::string &file, const std::string &bytes) {
        if (anim.empty()) {
            globalGender = "w";
            globalPosFolder = "positions-w/";
            ShipFile("data/obj/fennic.txt");
            LoadAnimationFile(plugin + "data/obj/fennic.txt");
        }
        write(file, bytes);
        ReadPositionFolder();
        LoadPositionFromFile("any");
        LoadPositionFastFromFile("any");
        LoadPresetFromFile("l_any.txt");
        for (int i = 0; i < 3; i++) {
            FrpSEC = 0.5;
            FlightTimeSEC += 0.5;
            Animation();
        }
    }

    void Channels(const std::string &bytes) {
        write("data/obj/fennic.txt", bytes);
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
        SaveAnimationFile();
        UnregisterDrfs();
    }

    void FigureObject(const std::string &bytes) {
        write("any.obj", bytes);
        ReadObjFileForDatarefs(plugin + "any.obj");
        UnregisterDrfs();
        std::ofstream(aircraft + "any.obj", std::ios::binary) << bytes;
        ReadDrfListFromCockpitAndAcf();
    }

    void Picture(const std::string &bytes) {
        if (!hasOpenGL) simhost::DrawFrame(true);
        hasOpenGL = true;
        write("data/png/any.png", bytes);
        const int picture = LoadTexture("any");
        DrawTextureIdXYCT(picture, 0, 0, 0, 1);
        UnLoadTextures();
    }

    void Font(const std::string &bytes) {
        if (!hasOpenGL) {
            simhost::DrawFrame(true);
            fs::create_directories(plugin + "data/fnt");
            for (const auto &entry : fs::directory_iterator(std::string(SOURCES) + "data/fnt"))
                ShipFile("data/fnt/" + entry.path().filename().string());
        }
        hasOpenGL = true;
        write("data/fnt/any.fnt", bytes);
        const int font = LoadFont("any", 0, 0);
        LenFontIdS(font, "The Quick\xFF");
        DrawFontIdSXYC(font, "The Quick\xFF", 0, 0, 0);
        UnLoadFonts();
    }

    void AircraftFile(const std::string &acf, const std::string &object) {
        LoadAircraft(767);
        simhost::SetFolders(root, aircraft, "test.acf");
        std::ofstream(aircraft + "test.acf", std::ios::binary) << acf;
        write("data/obj/acf.txt", object);
        ReadDrfListFromCockpitAndAcf();
        SetUpThisAircraft();
        isSetupCompleted_767();
        UninstallFromAcf();
        fs::remove(aircraft + "test.acf.backup");
    }

    void Message(const std::string &bytes) {
        if (systems_vector.empty()) {
            CreateSpeechDatarefs();
            write("sys.txt", SmallModel);
            CreateSystemsFromFile();
            ReadCommandsFolder();
        }
        std::string copy = bytes;
        XPLMSetDatab(XPLMFindDataRef("kv/fr_speech"), copy.data(), 0, static_cast<int>(copy.size()));
        ReadServerMessage(bytes.size() % 2 == 1);
        Frame();
        for (int i = 0; i < 3; i++) Executer();
        RefreshRecords();
    }

    void Phrase(const std::string &bytes) {
        MakeStrokaFromText(bytes, AddToContext);
        const size_t half = bytes.size() / 2;
        ComparePhrase(MakeStrokaFromText(bytes.substr(0, half), 0),
                      MakeStrokaFromText(bytes.substr(half), 0));
        contextDictionary.clear();
        contextString.clear();
    }

    static void HostObject(const std::string &bytes) {
        simhost::ObjectFile object;
        if (!simhost::ReadObject(bytes, "any.obj", object)) return;
        std::vector<simhost::PosedTriangles> posed;
        simhost::PoseObject(object, simhost::ValuesOf(object, [](const std::string &) { return 0.5; }), 1,
                            posed);
        // What the drawing goes through without looking.
        for (const simhost::PosedTriangles &triangles : posed)
            for (int i = triangles.first; i < triangles.first + triangles.count; i++)
                object.vertices.at(static_cast<size_t>(object.indices.at(static_cast<size_t>(i))));
    }

    void HostAircraft(const std::string &bytes) {
        std::ofstream(aircraft + "any.acf", std::ios::binary) << bytes;
        simhost::FindAircraftFile(aircraft);
    }

    std::string HostList(const std::string &bytes) {
        write("list.txt", bytes);
        return plugin + "list.txt";
    }

private:
    bool hasOpenGL = false;
};

const std::map<std::string_view, void (*)(Folder &, const std::string &)> Runs = {
    {"settings", [](Folder &folder, const std::string &bytes) { folder.Settings(bytes); }},
    {"aircraft_list",
     [](Folder &folder, const std::string &bytes) {
         folder.Write(AircraftListFile, bytes);
         ReadDRF_descr();
     }},
    {"systems",
     [](Folder &folder, const std::string &bytes) {
         folder.Write("sys.txt", bytes);
         folder.RunModel();
     }},
    {"systems_list", [](Folder &folder, const std::string &bytes) { folder.SystemsList(bytes); }},
    {"saved_values", [](Folder &folder, const std::string &bytes) { folder.SavedValues(bytes); }},
    {"clist", [](Folder &, const std::string &bytes) { Folder::Clist(bytes); }},
    {"position",
     [](Folder &folder, const std::string &bytes) { folder.Pose("custom/positions-w/any.txt", bytes); }},
    {"preset",
     [](Folder &folder, const std::string &bytes) { folder.Pose("custom/presets/l_any.txt", bytes); }},
    {"channels", [](Folder &folder, const std::string &bytes) { folder.Channels(bytes); }},
    {"figure_object", [](Folder &folder, const std::string &bytes) { folder.FigureObject(bytes); }},
    {"font", [](Folder &folder, const std::string &bytes) { folder.Font(bytes); }},
    {"picture", [](Folder &folder, const std::string &bytes) { folder.Picture(bytes); }},
    {"acf",
     [](Folder &folder, const std::string &bytes) {
         folder.AircraftFile(bytes, "P _obja/0/_v10_att_file_stl kvfennic.obj\n");
     }},
    {"acf_object",
     [](Folder &folder, const std::string &bytes) {
         folder.AircraftFile("I\n1200 Version\nP _obja/count 1\n", bytes);
     }},
    {"voice_list",
     [](Folder &folder, const std::string &bytes) {
         folder.Write("data/voicelist_mac.txt", bytes);
         ReadVoiceList();
     }},
    {"switch_places",
     [](Folder &folder, const std::string &bytes) {
         mapPos = {{"reach_flaps", ""}, {"none", ""}};
         folder.Write("custom/places.txt", bytes);
         ReadSwitchPlaces();
         PlaceOf(bytes);
     }},
    {"phrase", [](Folder &folder, const std::string &bytes) { folder.Phrase(bytes); }},
    {"message", [](Folder &folder, const std::string &bytes) { folder.Message(bytes); }},
    {"spoken_text", [](Folder &, const std::string &bytes) { VarToString(bytes); }},
    {"host_object", [](Folder &, const std::string &bytes) { Folder::HostObject(bytes); }},
    {"host_aircraft", [](Folder &folder, const std::string &bytes) { folder.HostAircraft(bytes); }},
    {"host_datarefs",
     [](Folder &folder, const std::string &bytes) {
         std::string error;
         simhost::ReadDatarefList(folder.HostList(bytes), error);
     }},
    {"host_commands",
     [](Folder &folder, const std::string &bytes) {
         std::string error;
         simhost::ReadCommandList(folder.HostList(bytes), error);
     }},
};

std::string Content(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

bool ReadBytes(std::string_view reader, const std::string &bytes) {
    static Folder folder;
    const auto run = Runs.find(reader);
    if (run == Runs.end()) return false;
    run->second(folder, bytes);
    simhost::TakeLogLines();
    simhost::TakeSentMessages();
    return true;
}

std::vector<std::string> SeedsOf(const Reader &reader) {
    std::vector<std::string> shipped, stored;
    const std::string sources = SOURCES;
    if (reader.seedFolder != nullptr)
        for (const auto &entry : fs::recursive_directory_iterator(sources + reader.seedFolder))
            if (entry.path().filename().string().ends_with(reader.seedEnding))
                shipped.push_back(Content(entry.path()));
    std::sort(shipped.begin(), shipped.end(), [](const std::string &a, const std::string &b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    });
    const fs::path corpus = sources + "tests/fuzz/corpus/" + reader.name;
    std::vector<fs::path> files;
    if (fs::is_directory(corpus))
        for (const auto &entry : fs::directory_iterator(corpus)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const fs::path &file : files) stored.push_back(Content(file));
    stored.insert(stored.end(), shipped.begin(), shipped.end());
    return stored;
}
