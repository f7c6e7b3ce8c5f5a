// The simulator's commands that are known without its lists. A switch's commands move its dataref, so that a
// procedure that throws it by command is seen by a checklist that looks at the dataref.
#include "simhost/world/builtin_commands.h"

#include <algorithm>

#include "simhost/simulator.h"

namespace simhost {

namespace {

// Each makes three commands: name + "_on", "_off", and the toggle.
struct Switch {
    const char *name;
    const char *toggle;
    const char *dataref;
    int index = 0;
};
constexpr Switch Switches[] = {
    {"sim/electrical/battery_1", "_toggle", "sim/cockpit2/electrical/battery_on", 0},
    {"sim/electrical/battery_2", "_toggle", "sim/cockpit2/electrical/battery_on", 1},
    {"sim/electrical/generator_1", "_toggle", "sim/cockpit2/electrical/generator_on", 0},
    {"sim/electrical/generator_2", "_toggle", "sim/cockpit2/electrical/generator_on", 1},
    {"sim/electrical/generator_3", "_toggle", "sim/cockpit2/electrical/generator_on", 2},
    {"sim/electrical/generator_4", "_toggle", "sim/cockpit2/electrical/generator_on", 3},
    {"sim/electrical/GPU", "_toggle", "sim/cockpit2/electrical/GPU_generator_on"},
    {"sim/electrical/cross_tie", "_toggle", "sim/cockpit2/electrical/cross_tie"},
    {"sim/electrical/inverter_1", "_toggle", "sim/cockpit2/electrical/inverter_on", 0},
    {"sim/electrical/inverter_2", "_toggle", "sim/cockpit2/electrical/inverter_on", 1},
    {"sim/systems/avionics", "_toggle", "sim/cockpit2/switches/avionics_power_on"},
    {"sim/systems/gnd_com_power", "_toggle", "sim/cockpit2/switches/gnd_com_power_on"},
    {"sim/systems/yaw_damper", "_toggle", "sim/cockpit2/switches/yaw_damper_on"},
    {"sim/lights/nav_lights", "_toggle", "sim/cockpit2/switches/navigation_lights_on"},
    {"sim/lights/beacon_lights", "_toggle", "sim/cockpit2/switches/beacon_on"},
    {"sim/lights/strobe_lights", "_toggle", "sim/cockpit2/switches/strobe_lights_on"},
    {"sim/lights/taxi_lights", "_toggle", "sim/cockpit2/switches/taxi_light_on"},
    {"sim/lights/landing_lights", "_toggle", "sim/cockpit2/switches/landing_lights_on"},
    {"sim/lights/spot_lights", "_toggle", "sim/cockpit2/switches/spot_light_on"},
    {"sim/fuel/fuel_pump_1", "_tog", "sim/cockpit2/engine/actuators/fuel_pump_on", 0},
    {"sim/fuel/fuel_pump_2", "_tog", "sim/cockpit2/engine/actuators/fuel_pump_on", 1},
    {"sim/fuel/fuel_pumps", "_tog", "sim/cockpit2/engine/actuators/fuel_pump_on", 0},
    {"sim/ice/pitot_heat0", "_tog", "sim/cockpit2/ice/ice_pitot_heat_on_pilot"},
    {"sim/ice/pitot_heat1", "_tog", "sim/cockpit2/ice/ice_pitot_heat_on_copilot"},
    {"sim/ice/static_heat0", "_tog", "sim/cockpit2/ice/ice_static_heat_on_pilot"},
    {"sim/ice/window_heat", "_tog", "sim/cockpit2/ice/ice_window_heat_on"},
    {"sim/ice/inlet_heat", "_tog", "sim/cockpit2/ice/ice_inlet_heat_on"},
    {"sim/bleed_air/apu", "_toggle", "sim/cockpit2/bleedair/actuators/apu_bleed"},
    {"sim/bleed_air/gpu", "_toggle", "sim/cockpit2/bleedair/actuators/gpu_bleed"},
    {"sim/bleed_air/pack_left", "_toggle", "sim/cockpit2/bleedair/actuators/pack_left"},
    {"sim/bleed_air/pack_right", "_toggle", "sim/cockpit2/bleedair/actuators/pack_right"},
    {"sim/flight_controls/hydraulic", "_tog", "sim/cockpit2/hydraulics/actuators/engine_pump", 0},
    {"sim/engines/carb_heat", "_toggle", "sim/cockpit2/engine/actuators/carb_heat_ratio", 0},
};

struct Single {
    const char *command;
    const char *dataref;
    int index;
    Move move;
    double value;
};
constexpr const char *Magnetos = "sim/cockpit2/engine/actuators/ignition_on";
constexpr const char *IgnitionKey = "sim/cockpit2/engine/actuators/ignition_key";
constexpr const char *FuelSelector = "sim/cockpit2/fuel/fuel_tank_selector";
constexpr const char *Transponder = "sim/cockpit2/radios/actuators/transponder_mode";
constexpr const char *Flaps = "sim/cockpit2/controls/flap_handle_request_ratio";
constexpr const char *FlapRatio = "sim/cockpit2/controls/flap_ratio";
constexpr const char *ParkingBrake = "sim/cockpit2/controls/parking_brake_ratio";
constexpr const char *GearHandle = "sim/cockpit2/controls/gear_handle_down";
constexpr const char *SpeedBrakes = "sim/cockpit2/controls/speedbrake_ratio";
constexpr const char *Autobrake = "sim/cockpit2/switches/auto_brake_level";
constexpr const char *ApuSwitch = "sim/cockpit2/electrical/APU_starter_switch";
constexpr const char *ApuGenerator = "sim/cockpit2/electrical/APU_generator_on";
constexpr const char *EngineMode = "sim/cockpit2/engine/actuators/eng_mode_selector";
constexpr const char *Throttle = "sim/cockpit2/engine/actuators/throttle_ratio_all";
constexpr const char *Mixture = "sim/cockpit2/engine/actuators/mixture_ratio_all";
constexpr const char *Altimeter = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot";
constexpr const char *AltimeterCopilot = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_copilot";
constexpr const char *FlightDirector = "sim/cockpit2/autopilot/flight_director_mode";

// A command may stand here more than once. One without a dataref only exists.
constexpr Single Singles[] = {
    {"sim/electrical/batteries_toggle", "sim/cockpit2/electrical/battery_on", 0, Move::Toggle, 0},
    {"sim/electrical/generators_toggle", "sim/cockpit2/electrical/generator_on", 0, Move::Toggle, 0},
    {"sim/electrical/APU_off", ApuSwitch, 0, Move::Set, 0},
    {"sim/electrical/APU_on", ApuSwitch, 0, Move::Set, 1},
    {"sim/electrical/APU_start", ApuSwitch, 0, Move::Set, 2},
    {"sim/electrical/APU_generator_on", ApuGenerator, 0, Move::Set, 1},
    {"sim/electrical/APU_generator_off", ApuGenerator, 0, Move::Set, 0},
    {"sim/starters/eng_mode_norm", EngineMode, 0, Move::Set, 0},
    {"sim/starters/eng_mode_start", EngineMode, 0, Move::Set, 1},
    {"sim/magnetos/magnetos_off", Magnetos, 0, Move::Set, 0},
    {"sim/magnetos/magnetos_off", IgnitionKey, 0, Move::Set, 0},
    {"sim/magnetos/magnetos_both", Magnetos, 0, Move::Set, 3},
    {"sim/magnetos/magnetos_both", IgnitionKey, 0, Move::Set, 3},
    {"sim/magnetos/magnetos_off_1", Magnetos, 0, Move::Set, 0},
    {"sim/magnetos/magnetos_off_1", IgnitionKey, 0, Move::Set, 0},
    {"sim/magnetos/magnetos_left_1", Magnetos, 0, Move::Set, 1},
    {"sim/magnetos/magnetos_left_1", IgnitionKey, 0, Move::Set, 1},
    {"sim/magnetos/magnetos_right_1", Magnetos, 0, Move::Set, 2},
    {"sim/magnetos/magnetos_right_1", IgnitionKey, 0, Move::Set, 2},
    {"sim/magnetos/magnetos_both_1", Magnetos, 0, Move::Set, 3},
    {"sim/magnetos/magnetos_both_1", IgnitionKey, 0, Move::Set, 3},
    {"sim/fuel/fuel_selector_none", FuelSelector, 0, Move::Set, 0},
    {"sim/fuel/fuel_selector_lft", FuelSelector, 0, Move::Set, 1},
    {"sim/fuel/fuel_selector_ctr", FuelSelector, 0, Move::Set, 2},
    {"sim/fuel/fuel_selector_rgt", FuelSelector, 0, Move::Set, 3},
    {"sim/fuel/fuel_selector_all", FuelSelector, 0, Move::Set, 4},
    {"sim/transponder/transponder_off", Transponder, 0, Move::Set, 0},
    {"sim/transponder/transponder_standby", Transponder, 0, Move::Set, 1},
    {"sim/transponder/transponder_on", Transponder, 0, Move::Set, 2},
    {"sim/transponder/transponder_alt", Transponder, 0, Move::Set, 3},
    {"sim/transponder/transponder_test", Transponder, 0, Move::Set, 4},
    {"sim/transponder/transponder_ground", Transponder, 0, Move::Set, 5},
    {"sim/transponder/transponder_ta_only", Transponder, 0, Move::Set, 6},
    {"sim/transponder/transponder_ta_ra", Transponder, 0, Move::Set, 7},
    {"sim/flight_controls/flaps_up", Flaps, 0, Move::Notch, -1},
    {"sim/flight_controls/flaps_up", FlapRatio, 0, Move::Notch, -1},
    {"sim/flight_controls/flaps_down", Flaps, 0, Move::Notch, 1},
    {"sim/flight_controls/flaps_down", FlapRatio, 0, Move::Notch, 1},
    {"sim/flight_controls/flaps_up_full", Flaps, 0, Move::Set, 0},
    {"sim/flight_controls/flaps_up_full", FlapRatio, 0, Move::Set, 0},
    {"sim/flight_controls/flaps_down_full", Flaps, 0, Move::Set, 1},
    {"sim/flight_controls/flaps_down_full", FlapRatio, 0, Move::Set, 1},
    {"sim/flight_controls/park_brake_set", ParkingBrake, 0, Move::Set, 1},
    {"sim/flight_controls/park_brake_release", ParkingBrake, 0, Move::Set, 0},
    {"sim/flight_controls/park_brake_toggle", ParkingBrake, 0, Move::Toggle, 0},
    {"sim/flight_controls/brakes_toggle_max", ParkingBrake, 0, Move::Toggle, 0},
    {"sim/flight_controls/brakes_rto_auto", Autobrake, 0, Move::Set, 0},
    {"sim/flight_controls/brakes_off_auto", Autobrake, 0, Move::Set, 1},
    {"sim/flight_controls/brakes_1_auto", Autobrake, 0, Move::Set, 2},
    {"sim/flight_controls/brakes_2_auto", Autobrake, 0, Move::Set, 3},
    {"sim/flight_controls/brakes_3_auto", Autobrake, 0, Move::Set, 4},
    {"sim/flight_controls/brakes_max_auto", Autobrake, 0, Move::Set, 5},
    {"sim/flight_controls/speed_brakes_up_all", SpeedBrakes, 0, Move::Set, 0},
    {"sim/flight_controls/speed_brakes_down_all", SpeedBrakes, 0, Move::Set, 1},
    {"sim/flight_controls/landing_gear_down", GearHandle, 0, Move::Set, 1},
    {"sim/flight_controls/landing_gear_up", GearHandle, 0, Move::Set, 0},
    {"sim/flight_controls/landing_gear_toggle", GearHandle, 0, Move::Toggle, 0},
    {"sim/engines/throttle_full", Throttle, 0, Move::Set, 1},
    {"sim/engines/throttle_full", "sim/cockpit2/engine/actuators/throttle_ratio", 0, Move::Set, 1},
    {"sim/engines/throttle_idle", Throttle, 0, Move::Set, 0},
    {"sim/engines/throttle_idle", "sim/cockpit2/engine/actuators/throttle_ratio", 0, Move::Set, 0},
    {"sim/engines/mixture_max", Mixture, 0, Move::Set, 1},
    {"sim/engines/mixture_max", "sim/cockpit2/engine/actuators/mixture_ratio", 0, Move::Set, 1},
    {"sim/engines/mixture_min", Mixture, 0, Move::Set, 0},
    {"sim/engines/mixture_min", "sim/cockpit2/engine/actuators/mixture_ratio", 0, Move::Set, 0},
    {"sim/instruments/barometer_std", Altimeter, 0, Move::Set, 29.92},
    {"sim/instruments/barometer_copilot_std", AltimeterCopilot, 0, Move::Set, 29.92},
    {"sim/systems/seatbelt_sign_toggle", "sim/cockpit2/switches/fasten_seat_belts", 0, Move::Toggle, 0},
    {"sim/systems/no_smoking_toggle", "sim/cockpit2/switches/no_smoking", 0, Move::Toggle, 0},
    {"sim/ice/alternate_static_port", "sim/cockpit2/switches/alternate_static_air_ratio", 0, Move::Toggle, 0},
    {"sim/autopilot/fdir_on", FlightDirector, 0, Move::Set, 1},
    {"sim/autopilot/servos_on", FlightDirector, 0, Move::Set, 2},
    {"sim/autopilot/heading", "sim/cockpit2/autopilot/heading_status", 0, Move::Set, 2},
    {"sim/autopilot/NAV", "sim/cockpit2/autopilot/nav_status", 0, Move::Set, 2},
    {"sim/autopilot/altitude_hold", "sim/cockpit2/autopilot/altitude_hold_status", 0, Move::Set, 2},
    {"sim/autopilot/vertical_speed", "sim/cockpit2/autopilot/vvi_status", 0, Move::Set, 2},
    {"sim/autopilot/approach", "sim/cockpit2/autopilot/approach_status", 0, Move::Set, 1},
    {"sim/autopilot/servos_off_any", FlightDirector, 0, Move::Set, 0},
    {"sim/operation/pause_on", "sim/time/paused", 0, Move::Set, 1},
    {"sim/operation/pause_off", "sim/time/paused", 0, Move::Set, 0},
    {"sim/operation/pause_toggle", "sim/time/paused", 0, Move::Toggle, 0},
};

// Commands whose doing is beyond one dataref: they exist, are counted and reach their handlers.
constexpr const char *Others[] = {
    "sim/none/none",
    "sim/annunciator/clear_master_caution",
    "sim/annunciator/clear_master_warning",
    "sim/annunciator/test_all_annunciators",
    "sim/annunciator/test_stall",
    "sim/autopilot/fdir_toggle",
    "sim/autopilot/servos_toggle",
    "sim/autopilot/take_off_go_around",
    "sim/engines/engage_starters",
    "sim/engines/mixture_down",
    "sim/engines/mixture_up",
    "sim/engines/prop_down",
    "sim/engines/prop_up",
    "sim/engines/throttle_down",
    "sim/engines/throttle_up",
    "sim/flight_controls/aileron_trim_center",
    "sim/flight_controls/brakes_max",
    "sim/flight_controls/brakes_regular",
    "sim/flight_controls/brakes_toggle_regular",
    "sim/flight_controls/door_close_1",
    "sim/flight_controls/door_close_2",
    "sim/flight_controls/door_open_1",
    "sim/flight_controls/door_open_2",
    "sim/flight_controls/door_toggle_1",
    "sim/flight_controls/door_toggle_2",
    "sim/flight_controls/install_chocks",
    "sim/flight_controls/left_brake",
    "sim/flight_controls/pitch_trim_down",
    "sim/flight_controls/pitch_trim_takeoff",
    "sim/flight_controls/pitch_trim_up",
    "sim/flight_controls/remove_chocks",
    "sim/flight_controls/right_brake",
    "sim/flight_controls/rudder_trim_center",
    "sim/flight_controls/toggle_chocks",
    "sim/fuel/engine_1_primer",
    "sim/ignition/ignition_down_1",
    "sim/ignition/ignition_up_1",
    "sim/instruments/barometer_down",
    "sim/instruments/barometer_up",
    "sim/instruments/DG_sync_down",
    "sim/instruments/DG_sync_mag",
    "sim/instruments/DG_sync_up",
    "sim/instruments/timer_reset",
    "sim/instruments/timer_start_stop",
    "sim/magnetos/magnetos_down_1",
    "sim/magnetos/magnetos_up_1",
    "sim/radios/com1_standy_flip",
    "sim/radios/com2_standy_flip",
    "sim/radios/nav1_standy_flip",
    "sim/radios/nav2_standy_flip",
    "sim/starters/engage_starter_1",
    "sim/starters/engage_starter_2",
    "sim/starters/engage_starter_3",
    "sim/starters/engage_starter_4",
    "sim/starters/shut_down",
    "sim/transponder/transponder_ident",
};

std::vector<BuiltinAction> MakeActions() {
    std::vector<BuiltinAction> actions;
    for (const Switch &entry : Switches) {
        const std::string name = entry.name;
        actions.push_back({name + "_on", entry.dataref, entry.index, Move::Set, 1});
        actions.push_back({name + "_off", entry.dataref, entry.index, Move::Set, 0});
        actions.push_back({name + entry.toggle, entry.dataref, entry.index, Move::Toggle, 0});
    }
    for (const Single &entry : Singles) {
        actions.push_back({entry.command, entry.dataref, entry.index, entry.move, entry.value});
    }
    std::stable_sort(actions.begin(), actions.end(),
                     [](const BuiltinAction &a, const BuiltinAction &b) { return a.command < b.command; });
    return actions;
}

} // namespace

std::span<const BuiltinAction> BuiltinActions() {
    static const auto &actions = *new std::vector<BuiltinAction>(MakeActions());
    return actions;
}

std::vector<std::string> BuiltinCommands() {
    std::vector<std::string> commands(std::begin(Others), std::end(Others));
    for (const BuiltinAction &action : BuiltinActions()) commands.push_back(action.command);
    return commands;
}

const BuiltinAction *FindBuiltinAction(std::string_view command) {
    const std::span<const BuiltinAction> actions = BuiltinActions();
    const auto found = std::lower_bound(
        actions.begin(), actions.end(), command,
        [](const BuiltinAction &action, std::string_view name) { return action.command < name; });
    return found != actions.end() && found->command == command ? &*found : nullptr;
}

void RunBuiltinActions(const BuiltinAction &first) {
    const std::span<const BuiltinAction> actions = BuiltinActions();
    const BuiltinAction *const end = actions.data() + actions.size();
    for (const BuiltinAction *action = &first; action < end && action->command == first.command; action++) {
        double value = action->value;
        if (action->move == Move::Toggle) value = GetNumber(action->dataref, action->index) != 0 ? 0 : 1;
        if (action->move == Move::Notch) {
            value /= std::max(GetNumber("sim/aircraft/controls/acf_flap_detents"), 1.0);
            value = std::clamp(GetNumber(action->dataref, action->index) + value, 0.0, 1.0);
        }
        SetNumber(action->dataref, value, action->index);
    }
}

} // namespace simhost
