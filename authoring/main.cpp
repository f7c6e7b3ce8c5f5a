// The program fennic-sim: reads the command line and flies the flight.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include "authoring/chart/chart.h"
#include "authoring/check/check.h"
#include "authoring/import/import.h"
#include "authoring/new/new.h"
#include "authoring/phrases/phrases.h"
#include "simhost/drawing/system_libraries.h"
#include "simhost/flights/flight.h"
#include "simhost/number_text.h"
#include "simhost/system.h"
#include "simhost/world/aircraft_folder.h"

namespace {

constexpr const char *Usage =
    "usage: fennic-sim [--aircraft DIR] [--fps N] [--screen WxH] [--window] [--quiet] [--keep]\n"
    "                  [--real-time] [--plugin DIR]... [--record FILE] [--alone] [--xplane DIR]\n"
    "                  FLIGHT.lua [ARG...]\n"
    "       fennic-sim check [--xplane DIR] FOLDER\n"
    "       fennic-sim graph [--dot] FOLDER [SYSTEM|DEVICE]\n"
    "       fennic-sim phrases FOLDER...\n"
    "       fennic-sim import [--xplane DIR] CLIST FOLDER\n"
    "       fennic-sim new [--name NAME | --aircraft DIR] [--empty] FOLDER\n"
    "\n"
    "  --aircraft DIR  the aircraft to fly: a path, or a name in the folder \"aircraft\" beside this\n"
    "                  program; it is copied, never written to. When not given, the aircraft in whose folder\n"
    "                  the flight lies, else Cessna_172SP\n"
    "  --fps N         frames a second (60)\n"
    "  --screen WxH    the screen's size in boxels (1920x1080)\n"
    "  --window        show the simulator in a window, in real time, until it is closed\n"
    "  --real-time     flight time follows the clock, without a window too\n"
    "  --plugin DIR    a plug-in for all aircraft, copied to the simulator's Resources/plugins: a path, or a\n"
    "                  name in the folder \"plugins\" beside this program; may be given several times\n"
    "  --record FILE   a WAV file of what is said: the pilot on the left, the first officer on the right\n"
    "  --quiet         no transcript\n"
    "  --keep          keep the scratch folder and say where it is\n"
    "  --alone         fly in one process, for debuggers: nothing reports a crash or a hang, and the scratch\n"
    "                  folder stays behind then\n"
    "  --xplane DIR    a real simulator's folder, for its lists of datarefs and commands\n"
    "\n"
    "\"check\" reads an aircraft's systems files, positions, settings and fonts as the plug-in does, and\n"
    "reports each mistake as file:line: severity: text. Exit status: 0 none, 1 errors or warnings, 2 no such\n"
    "folder.\n"
    "\n"
    "\"graph\" prints a picture (SVG, made by Graphviz): systems, devices and who reads whom, or one checklist\n"
    "as a flow. --dot prints what Graphviz is given instead.\n"
    "\n"
    "\"phrases\" prints what can be said in some aircraft and what is answered, as a page in Markdown.\n"
    "\n"
    "\"import\" makes systems files of the checklists in an aircraft's clist.txt, behind those in the folder.\n"
    "\n"
    "\"new\" makes a folder with the plug-in for an aircraft that she does not know yet: systems files with a\n"
    "checklist, a flow, a call-out and a guard, and a flight. Its name is what the aircraft's description begins\n"
    "with: NAME, or that of the .acf file in DIR, or else the folder's. --empty leaves the systems files to you.\n"
    "\n"
    "Exit status: 0 the flight went well; 1 the script failed or a plug-in left something behind;\n"
    "2 wrong usage; 3 a plug-in crashed, hung or ended the program.\n";

constexpr const char *StandardAircraft = "Cessna_172SP";

int Refuse(const std::string &why) {
    std::fprintf(stderr, "fennic-sim: %s\nTry fennic-sim --help.\n", why.c_str());
    return simhost::ExitUsage;
}

bool ReadScreen(std::string_view text, int &width, int &height) {
    const size_t cross = text.find('x');
    return cross != std::string_view::npos && simhost::ReadWholeNumber(text.substr(0, cross), width)
           && simhost::ReadWholeNumber(text.substr(cross + 1), height) && width >= 1 && width <= 16384
           && height >= 1 && height <= 16384;
}

// Where the speech companion is: in that simulator, or built beside this program. Empty: nowhere.
std::string SpeechFolder(const std::string &xplaneFolder) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::path program = simhost::ProgramFolder();
    for (const fs::path &folder :
         {fs::path(xplaneFolder) / "Resources/plugins/fennic_speech", program / "plugins/fennic_speech"})
        if (folder.is_absolute() || !xplaneFolder.empty())
            if (fs::exists(folder / "pronunciations.txt", failed)) return folder.generic_string();
    return "";
}

// "fennic-sim check [--xplane DIR] FOLDER"
int Check(int count, char **words) {
    simhost::CheckOptions options;
    for (int place = 0; place < count; ++place) {
        const std::string_view word = words[place];
        if (word == "--xplane" && place + 1 < count)
            options.xplaneFolder = words[++place];
        else if (word.starts_with('-') || !options.folder.empty())
            return Refuse("check takes one folder, and --xplane DIR; got " + std::string(word));
        else
            options.folder = word;
    }
    options.speechFolder = SpeechFolder(options.xplaneFolder);
    return options.folder.empty() ? Refuse("check needs a folder") : simhost::CheckFolder(options);
}

// "fennic-sim graph [--dot] FOLDER [SYSTEM|DEVICE]"
int Chart(int count, char **words) {
    simhost::ChartOptions options;
    for (int place = 0; place < count; ++place) {
        const std::string_view word = words[place];
        if (word == "--dot")
            options.isDot = true;
        else if (word.starts_with('-') || !options.device.empty())
            return Refuse("graph takes a folder, one device and --dot; got " + std::string(word));
        else
            (options.folder.empty() ? options.folder : options.device) = word;
    }
    return options.folder.empty() ? Refuse("graph needs a folder") : simhost::ChartFolder(options);
}

// "fennic-sim phrases FOLDER..."
int Phrases(int count, char **words) {
    if (count == 0 || words[0][0] == '-') return Refuse("phrases needs a folder");
    return simhost::PrintPhrases({words, words + count});
}

// "fennic-sim import [--xplane DIR] CLIST FOLDER"
int Import(int count, char **words) {
    simhost::ImportOptions options;
    for (int place = 0; place < count; place++) {
        const std::string_view word = words[place];
        if (word == "--xplane" && place + 1 < count)
            options.xplaneFolder = words[++place];
        else if (word.starts_with('-') || !options.folder.empty())
            return Refuse("import takes a clist.txt, a folder and --xplane DIR; got " + std::string(word));
        else
            (options.clist.empty() ? options.clist : options.folder) = word;
    }
    return options.folder.empty() ? Refuse("import needs a clist.txt and a folder")
                                  : simhost::ImportChecklists(options);
}

// "fennic-sim new [--name NAME | --aircraft DIR] [--empty] FOLDER"
int New(int count, char **words) {
    simhost::NewOptions options;
    for (int place = 0; place < count; place++) {
        const std::string_view word = words[place];
        if (word == "--empty") {
            options.isEmpty = true;
        } else if (word == "--name" && place + 1 < count) {
            options.name = words[++place];
        } else if (word == "--aircraft" && place + 1 < count) {
            options.name = simhost::FindAircraftFile(words[++place]).description;
            if (options.name.empty())
                return Refuse("there is no .acf file with a description in " + std::string(words[place]));
        } else if (word.starts_with('-') || !options.folder.empty()) {
            return Refuse("new takes a folder, --name NAME or --aircraft DIR, and --empty; got "
                          + std::string(word));
        } else {
            options.folder = word;
        }
    }
    options.sourcePlugin =
        simhost::FindAircraft(StandardAircraft, simhost::ProgramFolder()) + "/plugins/fennic";
    return options.folder.empty() ? Refuse("new needs a folder") : simhost::MakeNewAircraft(options);
}

constexpr struct {
    const char *name;
    int (*run)(int count, char **words);
} Tools[] = {{"check", Check}, {"graph", Chart}, {"phrases", Phrases}, {"import", Import}, {"new", New}};

bool isHelp(std::string_view word) {
    return word == "--help" || word == "-h";
}

int PrintUsage() {
    std::fputs(Usage, stdout);
    return simhost::ExitFlown;
}

} // namespace

int main(int count, char **words) {
    simhost::AllowLateLibraries(words);
    for (const auto &tool : Tools)
        if (count > 1 && std::strcmp(words[1], tool.name) == 0)
            return std::any_of(words + 2, words + count, isHelp) ? PrintUsage()
                                                                 : tool.run(count - 2, words + 2);
    simhost::FlightOptions options;
    std::string aircraft;
    int place = 1;
    for (; place < count && words[place][0] == '-'; ++place) {
        std::string option = words[place];
        if (option == "--") {
            ++place;
            break;
        }
        // "--fps 30" and "--fps=30"
        std::string value;
        const size_t equals = option.find('=');
        const bool isInOne = equals != std::string::npos;
        if (isInOne) {
            value = option.substr(equals + 1);
            option.resize(equals);
        }
        if (isHelp(option)) return PrintUsage();
        if (bool *isChosen = option == "--quiet"       ? &options.quiet
                             : option == "--keep"      ? &options.keep
                             : option == "--window"    ? &options.window
                             : option == "--real-time" ? &options.realTime
                             : option == "--alone"     ? &options.alone
                                                       : nullptr) {
            if (isInOne) return Refuse(option + " takes no value");
            *isChosen = true;
            continue;
        }
        if (option != "--aircraft" && option != "--plugin" && option != "--record" && option != "--fps"
            && option != "--screen" && option != "--xplane")
            return Refuse("there is no option " + option);
        if (!isInOne) {
            if (++place >= count) return Refuse(option + " needs a value");
            value = words[place];
        }
        if (option == "--aircraft") {
            aircraft = value;
        } else if (option == "--plugin") {
            const std::string folder = simhost::FindPlugin(value, simhost::ProgramFolder());
            if (simhost::FindPluginLibrary(folder).empty())
                return Refuse("there is no plug-in for this system in " + value);
            options.pluginFolders.push_back(folder);
        } else if (option == "--record") {
            options.recording = value;
        } else if (option == "--xplane") {
            options.xplaneFolder = value;
        } else if (option == "--fps") {
            if (!simhost::ReadWholeNumber(value, options.framesPerSecond) || !(options.framesPerSecond >= 1)
                || !(options.framesPerSecond <= 1000))
                return Refuse("--fps must be a number from 1 to 1000, got \"" + value + "\"");
        } else if (!ReadScreen(value, options.screenWidth, options.screenHeight)) {
            return Refuse("--screen must be a size such as 1920x1080, got \"" + value + "\"");
        }
    }
    if (place >= count) return Refuse("no flight given");
    if (!options.recording.empty() && (options.window || options.realTime))
        return Refuse("--record takes the simulator's own time, without --window and --real-time");
    options.script = words[place++];
    options.arguments.assign(words + place, words + count);

    std::error_code failed;
    if (!std::filesystem::exists(options.script, failed)
        || std::filesystem::is_directory(options.script, failed))
        return Refuse("there is no flight " + options.script
                      + (std::filesystem::is_directory(options.script, failed) ? ", which is a folder" : ""));
    if (aircraft.empty()) {
        // A flight that lies in an aircraft's folder is that aircraft's.
        const std::string folder = std::filesystem::absolute(options.script, failed).parent_path().string();
        aircraft = simhost::FindAircraftFile(folder).name.empty() ? StandardAircraft : folder;
    }
    options.aircraftFolder = simhost::FindAircraft(aircraft, simhost::ProgramFolder());
    if (options.aircraftFolder.empty()) return Refuse("there is no aircraft folder " + aircraft);
    // Each line is out before a plug-in can crash, and in order with stderr.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return simhost::FlyFlight(options);
}
