// Each reader's file lies in a plug-in's folder of its own, where the reader expects it; after each input
// what it left is taken away. The folder stays behind after a crash, with the input in it.
#include "tests/fuzz/readers.h"

#include <algorithm>
#include <utility>

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

namespace {

// Parameters that are saved, an answer that is waited for, and every type of spoken placeholder's source.
const char *const SmallModel =
    "sys=S\ndev=D\nout=P,double,,1,,,,,,,,1\nout=Q,int,,2,,,,,,,,1\nlogic:\ninstring=go\ncalc=[S.D.P]+[1]\n"
    "execute=0,say [S.D.P],0\n";

class Folder : public ModelFolder {
public:
    using PluginFolder::aircraft;
    using PluginFolder::plugin;
    using PluginFolder::root;
    using PluginFolder::write;
    void TestBody() override {}

    // In the aircraft's folder.
    void WriteBeside(const std::string &name, const std::string &bytes) const {
        std::ofstream(aircraft + name, std::ios::binary) << bytes;
    }

    void ShipFile(const std::string &name) const {
        fs::copy_file(std::string(SOURCES) + name, plugin + name, fs::copy_options::overwrite_existing);
    }

    // Reads the model, runs it, writes it, and ends.
    void RunModel() {
        CreateSystemsFromFile();
        for (int i = 0; i < 3; i++) {
            Frame(i == 1 ? "go" : "");
            if (!executeFlow.empty()) VarToString(executeFlow.front().text);
            executeFlow.clear();
        }
        SaveSysToTxtFile();
        SaveParametersValue();
        DeleteSystems();
        for (const char *rest : {"systems", "sys.txt"}) fs::remove_all(plugin + rest);
        fs::create_directories(plugin + "systems");
    }

    using ModelFolder::Frame;

    // From here on there is OpenGL.
    void Draw() {
        if (!std::exchange(hasOpenGL, true)) simhost::DrawFrame(true);
    }

private:
    bool hasOpenGL = false;
};

Folder &folder() {
    static Folder made;
    return made;
}

template <const char *file> void ReadPose(const std::string &bytes) {
    if (anim.empty()) {
        globalGender = "w";
        globalPosFolder = "positions-w/";
        folder().ShipFile("data/obj/fennic.txt");
        LoadAnimationFile(folder().plugin + "data/obj/fennic.txt");
    }
    folder().write(file, bytes);
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
constexpr char PositionFile[] = "custom/positions-w/any.txt", PresetFile[] = "custom/presets/l_any.txt";

void ReadFont(const std::string &bytes) {
    folder().Draw();
    if (!fs::exists(folder().plugin + "data/fnt"))
        fs::copy(std::string(SOURCES) + "data/fnt", folder().plugin + "data/fnt");
    folder().write("data/fnt/any.fnt", bytes);
    const int font = LoadFont("any", 0, 0);
    LenFontIdS(font, "The Quick\xFF");
    DrawFontIdSXYC(font, "The Quick\xFF", 0, 0, 0);
    UnLoadFonts();
}

void ReadAircraft(const std::string &acf, const std::string &object) {
    LoadAircraft(767);
    simhost::SetFolders(folder().root, folder().aircraft, "test.acf");
    folder().WriteBeside("test.acf", acf);
    folder().write("data/obj/acf.txt", object);
    ReadDrfListFromCockpitAndAcf();
    SetUpThisAircraft();
    isSetupCompleted_767();
    UninstallFromAcf();
    fs::remove(folder().aircraft + "test.acf.backup");
}

void ReadMessage(const std::string &bytes) {
    if (systems_vector.empty()) {
        CreateSpeechDatarefs();
        folder().write("sys.txt", SmallModel);
        CreateSystemsFromFile();
        ReadCommandsFolder();
    }
    std::string copy = bytes;
    XPLMSetDatab(XPLMFindDataRef("kv/fr_speech"), copy.data(), 0, static_cast<int>(copy.size()));
    ReadServerMessage(bytes.size() % 2 == 1);
    Folder::Frame();
    for (int i = 0; i < 3; i++) Executer();
    RefreshRecords();
}

void ReadPhrase(const std::string &bytes) {
    MakeStrokaFromText(bytes, AddToContext);
    const size_t half = bytes.size() / 2;
    ComparePhrase(MakeStrokaFromText(bytes.substr(0, half), 0), MakeStrokaFromText(bytes.substr(half), 0));
    contextDictionary.clear();
    contextString.clear();
}

void ReadHostObject(const std::string &bytes) {
    simhost::ObjectFile object;
    if (!simhost::ReadObject(bytes, "any.obj", object)) return;
    std::vector<simhost::PosedTriangles> posed;
    simhost::PoseObject(object, simhost::ValuesOf(object, [](const std::string &) { return 0.5; }), 1, posed);
    // What the drawing goes through without looking.
    for (const simhost::PosedTriangles &triangles : posed)
        for (int i = triangles.first; i < triangles.first + triangles.count; i++)
            object.vertices.at(static_cast<size_t>(object.indices.at(static_cast<size_t>(i))));
}

template <auto read> void ReadHostList(const std::string &bytes) {
    std::string error;
    folder().write("list.txt", bytes);
    read(folder().plugin + "list.txt", error);
}

std::string Content(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

const std::vector<Reader> Readers = {
    {"settings", "data", "settings_mac.txt",
     [](const std::string &bytes) {
         folder().write("data/settings_win.txt", "");
         folder().write("data/settings_mac.txt", bytes);
         ReadSettings();
         SaveSettings();
     }},
    {"aircraft_list", "aircraft/any", "aircraft.txt",
     [](const std::string &bytes) {
         folder().write(AircraftListFile, bytes);
         ReadDRF_descr();
     }},
    {"systems", "aircraft/Cessna_172SP", ".txt",
     [](const std::string &bytes) {
         folder().write("sys.txt", bytes);
         folder().RunModel();
     }},
    {"systems_list", "aircraft/Cessna_172SP", "_systems.txt",
     [](const std::string &bytes) {
         folder().write("systems/A.txt", SmallModel);
         folder().write("systems/_systems.txt", bytes);
         folder().RunModel();
     }},
    {"saved_values", nullptr, nullptr,
     [](const std::string &bytes) {
         folder().write("sys.txt", SmallModel);
         folder().write("systems/_save.txt", bytes);
         folder().RunModel();
     }},
    {"clist", nullptr, nullptr,
     [](const std::string &bytes) {
         // What is made of checklists can be read: a note without a line would say that it cannot.
         for (const ClistNote &note : ImportClist(bytes, {}).notes)
             if (note.line == 0) throw std::runtime_error(note.text);
     }},
    {"position", "custom/positions-w", ".txt", ReadPose<PositionFile>},
    {"preset", "custom/presets", ".txt", ReadPose<PresetFile>},
    {"switch_places", "custom", "places.txt",
     [](const std::string &bytes) {
         mapPos = {{"reach_flaps", ""}, {"none", ""}};
         folder().write("custom/places.txt", bytes);
         ReadSwitchPlaces();
         PlaceOf(bytes);
     }},
    {"channels", "data/obj", "fennic.txt",
     [](const std::string &bytes) {
         folder().write("data/obj/fennic.txt", bytes);
         LoadAnimationFile(folder().plugin + "data/obj/fennic.txt");
         SaveAnimationFile();
         UnregisterDrfs();
     }},
    {"figure_object", "data/obj", "seats.obj",
     [](const std::string &bytes) {
         folder().WriteBeside("any.obj", bytes);
         ReadObjFileForDatarefs(folder().aircraft + "any.obj");
         UnregisterDrfs();
         ReadDrfListFromCockpitAndAcf();
     }},
    {"font", "data/fnt", ".fnt", ReadFont},
    {"picture", "data/png", ".png",
     [](const std::string &bytes) {
         folder().Draw();
         folder().write("data/png/any.png", bytes);
         DrawTextureIdXYCT(LoadTexture("any"), 0, 0, 0, 1);
         UnLoadTextures();
     }},
    {"acf", "aircraft", ".acf",
     [](const std::string &bytes) { ReadAircraft(bytes, "P _obja/0/_v10_att_file_stl kvfennic.obj\n"); }},
    {"acf_object", "data/obj", "acf.txt",
     [](const std::string &bytes) { ReadAircraft("I\n1200 Version\nP _obja/count 1\n", bytes); }},
    {"voice_list", "data", "voicelist_mac.txt",
     [](const std::string &bytes) {
         folder().write("data/voicelist_mac.txt", bytes);
         ReadVoiceList();
     }},
    {"phrase", nullptr, nullptr, ReadPhrase},
    {"message", nullptr, nullptr, ReadMessage},
    {"spoken_text", nullptr, nullptr, [](const std::string &bytes) { VarToString(bytes); }},
    {"host_object", "data/obj", "seats.obj", ReadHostObject},
    {"host_aircraft", "aircraft", ".acf",
     [](const std::string &bytes) {
         folder().WriteBeside("any.acf", bytes);
         simhost::FindAircraftFile(folder().aircraft);
     }},
    {"host_datarefs", nullptr, nullptr, ReadHostList<simhost::ReadDatarefList>},
    {"host_commands", nullptr, nullptr, ReadHostList<simhost::ReadCommandList>},
};

bool ReadBytes(std::string_view reader, const std::string &bytes) {
    const auto found =
        std::find_if(Readers.begin(), Readers.end(), [&](const Reader &each) { return each.name == reader; });
    if (found == Readers.end()) return false;
    folder();
    found->read(bytes);
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
