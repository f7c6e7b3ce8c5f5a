// Links go to earlier parameters alone, so that a model without pulses is at rest behind its first frame.
#include "bench/changing_model.h"

#include <algorithm>
#include <numeric>
#include <random>

#include "simhost/simulator.h"

namespace {

const int ParametersPerDevice = 25;
const int DevicesPerSystem = 20;

std::string PulseName(int group) {
    return "bench/pulse" + std::to_string(group);
}

class ModelMaker {
public:
    ModelMaker(int parameters, bool hasMore) : parameters(parameters), hasMore(hasMore) { FormGroups(); }

    std::string Make() {
        AddPulses();
        for (int i = 0; i < parameters; i++) {
            if (i % (ParametersPerDevice * DevicesPerSystem) == 0) text += "sys=" + System(i) + "\r\n";
            if (i % ParametersPerDevice == 0) text += "dev=" + Device(i) + "\r\n";
            AddParameter(i);
        }
        return text;
    }

private:
    const int parameters;
    const bool hasMore;
    std::string text;
    std::vector<int> groups;
    std::mt19937 random{172};

    int Random(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    void FormGroups() {
        for (const int share : {1, 9, 90}) // in thousandths
            groups.insert(groups.end(), static_cast<size_t>(parameters * share / 1000),
                          share == 1   ? 0
                          : share == 9 ? 1
                                       : 2);
        groups.resize(static_cast<size_t>(parameters), PulseGroups - 1);
        for (size_t i = groups.size(); i-- > 1;)
            std::swap(groups[i], groups[static_cast<size_t>(Random(static_cast<int>(i) + 1))]);
    }

    static std::string System(int i) {
        return "S" + std::to_string(i / (ParametersPerDevice * DevicesPerSystem));
    }
    static std::string Device(int i) { return "D" + std::to_string(i / ParametersPerDevice); }

    std::string Number() { return "[" + std::to_string(Random(10)) + ".5]"; }

    // Of an earlier parameter that no pulse of a faster group changes.
    std::string Link(int i, int fastestGroup) {
        for (int tries = 0; i > 0 && tries < 30; tries++) {
            const int other = Random(i);
            if (groups[static_cast<size_t>(other)] >= fastestGroup)
                return "[" + System(other) + "." + Device(other) + ".P" + std::to_string(other) + "]";
        }
        return Number();
    }

    void AddPulses() {
        text += "sys=PULSE\r\ndev=D\r\n";
        for (int group = 0; group < PulseGroups; group++) {
            simhost::PublishDataref(PulseName(group), xplmType_Float);
            text += "out=G" + std::to_string(group) + ",double,,0,,," + PulseName(group) + ",exist,,,,0\r\n";
        }
    }

    std::string Datarefs(int i) {
        if (!hasMore || i % 10 != 7) return ",,,";
        const std::string name = "bench/" + std::to_string(i);
        simhost::PublishDataref(name, xplmType_Float);
        return i % 20 == 7 ? name + ",exist,," : ",," + name + ",exist";
    }

    std::string Comparison(int i, bool isWithLink) {
        const char *const operators[] = {"==", "!=", ">", "<", ">=", "<="};
        return Link(i, 0) + operators[Random(6)] + (isWithLink ? Link(i, 0) : Number()) + "\r\n";
    }

    void AddParameter(int i) {
        const int group = groups[static_cast<size_t>(i)];
        text += "out=P" + std::to_string(i) + ",double,," + std::to_string(Random(10)) + ".0,";
        text += hasMore && i % 3 == 0 ? "-50,50," : ",,";
        text += Datarefs(i) + ",,0\r\n";
        for (int block = 0; block < 3; block++) {
            text += "logic:\r\n";
            if (block < 2) {
                const bool hasList = hasMore && block == 0 && i % 4 == 0;
                text += hasList ? Link(i, 0) + "!=[1;2;5;7]\r\n" : Comparison(i, true);
                text += Random(4) == 0 ? "||\r\n" : "&&\r\n";
                text += Comparison(i, false);
            }
            text += "calc=" + Link(i, group) + (Random(2) ? "+" : "-") + Link(i, group) + "*[0.5]+[PULSE.D.G"
                    + std::to_string(group) + "]\r\n";
        }
    }
};

} // namespace

std::string ChangingModel(int parameters, bool hasMore) {
    return ModelMaker(parameters, hasMore).Make();
}

std::vector<XPLMDataRef> Pulses() {
    std::vector<XPLMDataRef> pulses;
    for (int group = 0; group < PulseGroups; group++)
        pulses.push_back(XPLMFindDataRef(PulseName(group).c_str()));
    return pulses;
}
