// A plug-in's folder whose systems model a test writes as text, loads, and runs frame by frame.
#pragma once

#include "frame/kill_switch.h"
#include "systems/cycle.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "util/clock.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

class ModelFolder : public PluginFolder {
protected:
    ModelFolder() { isFennicKillDrfWasReaded = true; }

    // Loads a model from one file; the log then holds what loading said.
    void Load(const std::string &text) {
        write("sys.txt", text);
        simhost::TakeLogLines();
        CreateSystemsFromFile();
    }

    // An "out=" line of a parameter without limits and datarefs.
    static std::string Out(const std::string &name, const std::string &initial = "0") {
        return "out=" + name + ",double,," + initial + ",,,,,,,,0\n";
    }

    // A frame of the systems cycle, in which the text is heard.
    static void Frame(const std::string &heard = "") {
        if (!heard.empty()) LastRecognition = heard;
        CalculateSystemsCycle(0, 0, 0, nullptr);
    }

    static double Value(const std::string &link) {
        const sysLink_struct found = String2sysLink(link);
        EXPECT_TRUE(ParameterAt(found)) << "no parameter " << link;
        return GetValueFromSysLink(found);
    }

    static out_parameter_struct &Parameter(const std::string &link) {
        const sysLink_struct found = String2sysLink(link);
        if (!ParameterAt(found)) throw std::runtime_error("no parameter " + link);
        return *ParameterAt(found);
    }

    // The queued actions as "type text|type text".
    static std::string Queue() {
        std::string all;
        for (const doStruct &action : executeFlow)
            all += (all.empty() ? "" : "|") + std::to_string(action.type) + " " + action.text;
        return all;
    }

    // What stood in the queue, which the executer has now done.
    static std::string TakeQueue() {
        std::string all = Queue();
        executeFlow.clear();
        return all;
    }
};
