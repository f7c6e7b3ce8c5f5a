// A figure of 47 channels named c0 to c45, "head" at 3 and "xyz" at 46, with the gender "w" chosen, and time
// that the test moves on. No position exists yet.
#pragma once

#include <cmath>

#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/positions.h"
#include "figure/shown.h"
#include "frame/settings.h"
#include "tests/plugin_folder.h"
#include "util/clock.h"

class FigureFolder : public PluginFolder {
protected:
    bool isExecuterBusy = false; // idle motion waits for the script, as in the main loop

    FigureFolder() {
        globalGender = "w";
        globalPosFolder = "positions-w/";
        FlightTimeSEC = 100;
        std::string definition;
        for (int i = 0; i < 47; i++) definition += std::to_string(i) + "," + ChannelName(i) + "\r\n";
        write("data/obj/fennic.txt", definition);
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
        PublishShown();
        simhost::TakeLogLines();
    }

    static std::string ChannelName(int index) {
        if (index == HeadChannel) return "head";
        return index == FigureOffsetChannel ? "xyz" : "c" + std::to_string(index);
    }

    static double Shown(int index, char axis) {
        return simhost::GetNumber("kv/fo/" + ChannelName(index) + "_" + axis);
    }
    static void Show(int index, char axis, double value) {
        simhost::SetNumber("kv/fo/" + ChannelName(index) + "_" + axis, value);
    }

    // A frame as the main loop runs the figure; 0 seconds: paused.
    void Frame(double seconds) {
        FrpSEC = seconds;
        FlightTimeSEC += seconds;
        if (TargetTimeSEC != -1.0)
            Animation();
        else if (!isExecuterBusy)
            LiveAnimation();
        EyesAnimation();
        FaceAnimation();
    }

    void Run(double seconds, double frame = 0.02) {
        for (double end = FlightTimeSEC + seconds; FlightTimeSEC < end;) Frame(frame);
    }

    // How many lines the plug-in logged since the last call that contain the text.
    static int Logged(const std::string &text) {
        int count = 0;
        for (const std::string &line : simhost::TakeLogLines())
            if (line.find(text) != std::string::npos) count++;
        return count;
    }
};
