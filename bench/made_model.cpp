// Models are made by a small generator with a fixed seed: branches go both ways, and values change from
// frame to frame without leaving their range.
#include "bench/made_model.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "simhost/simulator.h"
#include "util/clock.h"

namespace {

const int ParametersPerDevice = 25;
const int DevicesPerSystem = 20;
const int StepsPerSequence = 5;
const int OneSequenceIn = 50 * StepsPerSequence; // so that one parameter in fifty is a step

class ModelMaker {
public:
    explicit ModelMaker(int parameters) : parameters(parameters) {}

    std::string Make() {
        for (int i = 0; i < parameters; i++) {
            if (i % (ParametersPerDevice * DevicesPerSystem) == 0)
                text += "sys=S" + std::to_string(i / (ParametersPerDevice * DevicesPerSystem)) + "\r\n";
            if (i % ParametersPerDevice == 0 || isStep(i) != isStep(i - 1)) StartDevice(i);
            AddParameter(i);
        }
        return text;
    }

private:
    const int parameters;
    std::string text;
    std::mt19937 random{172};

    static bool isStep(int i) { return i >= 0 && i % OneSequenceIn < StepsPerSequence; }

    int Random(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    // Devices begin at multiples of ParametersPerDevice and where steps end.
    static std::string Address(int i) {
        const int system = i / (ParametersPerDevice * DevicesPerSystem);
        const int behindSteps =
            i % ParametersPerDevice >= StepsPerSequence && isStep(i - i % ParametersPerDevice);
        return "S" + std::to_string(system) + ".D" + std::to_string(i / ParametersPerDevice)
               + (behindSteps ? "B" : "") + ".P" + std::to_string(i);
    }

    std::string RandomLink() { return "[" + Address(Random(parameters)) + "]"; }
    std::string RandomNumber() { return "[" + std::to_string(Random(100)) + ".5]"; }

    void StartDevice(int i) {
        const std::string address = Address(i);
        const size_t first = address.find('.') + 1;
        text += isStep(i) ? "devstack=" : "dev=";
        text += address.substr(first, address.find('.', first) - first) + "\r\n";
    }

    std::string Datarefs(int i) {
        if (i % 10 != 7) return ",,,";
        const std::string name = "bench/" + std::to_string(i);
        simhost::PublishDataref(name, xplmType_Float);
        simhost::SetNumber(name, Random(100));
        return i % 20 == 7 ? name + ",exist,," : ",," + name + ",exist";
    }

    void AddParameter(int i) {
        const int initial = isStep(i) ? 0 : Random(100);
        text += "out=P" + std::to_string(i) + ",double,unit," + std::to_string(initial) + ".0,,,";
        text += (isStep(i) ? ",,," : Datarefs(i)) + ",,0\r\n";
        const char *const operators[] = {"==", "!=", ">", "<", ">=", "<="};
        for (int block = 0; block < 2; block++) {
            text += "logic:\r\n";
            if (isStep(i))
                text += "instring=command " + std::to_string(i) + "\r\n";
            else
                text += RandomLink() + operators[Random(6)] + RandomLink() + "\r\n";
            text += Random(4) == 0 ? "||\r\n" : "&&\r\n";
            text += RandomLink() + operators[Random(6)] + RandomNumber() + "\r\n";
            if (isStep(i)) {
                text += "execute=0,Step " + std::to_string(i) + ",0.0\r\n";
            } else {
                const char *const middle[] = {"+", "-"};
                text += "calc=" + RandomLink() + middle[Random(2)] + RandomLink() + "*[0.5]\r\n";
            }
        }
    }
};

} // namespace

BenchFolder::BenchFolder() {
    std::string name = std::filesystem::temp_directory_path() / "fennic-bench-XXXXXX";
    if (!mkdtemp(name.data())) std::abort();
    root = name + "/";
    const std::string aircraft = root + "Aircraft/Bench/";
    plugin = aircraft + "plugins/fennic/64/";
    for (const char *folder : {"data", "systems"}) std::filesystem::create_directories(plugin + folder);
    simhost::ResetSimulator();
    simhost::SetFolders(root, aircraft, "");
    simhost::ActAsPlugin(plugin + "lin.xpl");
    FindSimulatorDatarefs();
}

BenchFolder::~BenchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

void BenchFolder::Write(const std::string &path, const std::string &text) const {
    std::ofstream(plugin + path, std::ios::binary) << text;
}

std::string MadeModel(int parameters) {
    return ModelMaker(parameters).Make();
}
