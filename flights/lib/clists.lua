-- Checklists in the form clist.txt that use all that the form has.
local clists = {}

clists.twin = [[
# A light twin.
sw_define_colour:green:0,200,0
sw_rcolsize:120
sw_checklist:Before Start:Before start
sw_itemvoid:COCKPIT PREPARATION
sw_item:PREFLIGHT INSPECTION|COMPLETE
sw_item:PARKING BRAKE|SET:sim/cockpit2/controls/parking_brake_ratio:>0.5
sw_item:FUEL SELECTORS|BOTH ON
sw_item:AVIONICS MASTER|OFF:sim/cockpit2/switches/avionics_power_on:0
sw_item:BATT SW|ON:sim/cockpit2/electrical/battery_on[0]:1
sw_item_c:\green\BEACON\\ LT|ON:sim/cockpit2/switches/beacon_on:1
sw_remark:Mind the propellers
sw_item:DOORS
sw_continue

sw_checklist:After Start
sw_show:sim/flightmodel/engine/ENGN_running[0]:1&&sim/flightmodel/engine/ENGN_running[1]:1
sw_iteminfo:ENG 1 OIL PRESS|GREEN:sim/cockpit2/engine/indicators/oil_pressure_psi[0]:25|115
sw_iteminfo:ENG 2 OIL PRESS|GREEN:sim/cockpit2/engine/indicators/oil_pressure_psi[1]:25|115
sw_item:GEN 1 & 2|ON:(sim/cockpit2/electrical/generator_on[0]:1 && sim/cockpit2/electrical/generator_on[1]:1)
@sw_item:NOT FOR THE EARS|NO
sw_item:XPDR|STBY / ON:sim/cockpit2/radios/actuators/transponder_mode:!0
sw_itemvoid:-----
sw_item:FLAPS|UP / 10:sim/cockpit2/controls/flap_ratio:0.0||sim/cockpit2/controls/flap_ratio:0.25
sw_item:ALT QNH|AS REQUIRED
sw_continue:Before Takeoff:sim/cockpit2/engine/indicators/oil_pressure_psi[0]:>25
sw_continue:Before Start

sw_checklist:Before Takeoff
sw_item:TRIM|T/O:sim/cockpit2/controls/elevator_trim:-0.1|0.1
sw_item:FLIGHT CTRLS|FREE::(({sim/cockpit2/controls/yoke_pitch_ratio} > 0.5) || ({sim/cockpit2/controls/yoke_pitch_ratio} < -0.5)) && !({sim/cockpit2/controls/yoke_roll_ratio} == 2)
sw_item:THROTTLE|ADVANCE:sim/cockpit2/engine/actuators/throttle_ratio_all:+>0.1
sw_item:FUEL BALANCE|CHECK:sim/flightmodel/weight/m_fuel[0]:<{sim/flightmodel/weight/m_fuel[1]}+10*2
sw_item:HDG BUG|SET::closer_than({sim/cockpit/autopilot/heading_mag}, {sim/flightmodel/position/magpsi}, 5)
sw_item:GEAR LEVER|CYCLE:sim/cockpit2/controls/gear_handle_down:0:1
sw_item:RPM|2,000:sim/cockpit2/engine/indicators/prop_speed_rpm[0]:round(1999.8)*(int)1.7|{sim/cockpit2/engine/indicators/prop_speed_rpm[1]}**2
sw_item:BROKEN|ON:sim/cockpit2/switches/beacon_on>1
sw_item:FAR ELEMENT|ON:sim/cockpit2/switches/custom_slider_on[20]:1
nonsense line
]]

clists.jet = [[
# An airliner, as its maker's sheet has it: conditions of datarefs that other plug-ins would publish, too.
sw_checklist:COCKPIT PREPARATION CHECKLIST:Cockpit Prep
sw_remark:DOWN TO THE LINE
sw_item:GEAR PINS & COVERS|REMOVED
sw_item:FUEL QUANTITY|____ KG / CHECKED:sim/flightmodel/weight/m_fuel_total:>1000
sw_item:SEAT BELTS|ON:maker/jet/overhead/seat_belts:1|2
sw_item:ADIRS|NAV:maker/jet/adirs[0]:1&&maker/jet/adirs[1]:1&&maker/jet/adirs[2]:1
sw_item:BARO REF|____ SET (BOTH):sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot:{sim/cockpit2/gauges/actuators/barometer_setting_in_hg_copilot}
sw_continue:BEFORE START CHECKLIST

sw_checklist:BEFORE START CHECKLIST
sw_item:PARKING BRAKE|ON / SET:sim/cockpit2/controls/parking_brake_ratio:=1
sw_item:T.O SPEEDS & THRUST|SET
sw_item:WINDOWS/DOORS|CLOSED (BOTH):maker/jet/door[0]:<0.1&&(maker/jet/door[1]:<0.1||maker/jet/cargo:0)
sw_item:ENG MODE SEL|IGN/START
sw_item:BEACON|ON:sim/cockpit2/switches/beacon_on:1
sw_continue::maker/jet/engines:>0
sw_continue

sw_checklist:AFTER START CHECKLIST
sw_show:sim/flightmodel/engine/ENGN_running[0]:1
sw_show:sim/flightmodel/engine/ENGN_running[1]:1
sw_item:ANTI ICE|AS RQRD
sw_item:ECAM STATUS|CHECKED
sw_item:PITCH TRIM|____ % SET:sim/cockpit2/controls/elevator_trim:-0.3|-0.01
sw_item:RUDDER TRIM|ZERO:sim/cockpit2/controls/rudder_trim:-1e-2|1.0e-2
sw_iteminfo:APU BLEED|OFF:sim/cockpit2/bleedair/actuators/apu_bleed:0
sw_item:N1|CHECK:round({sim/cockpit2/engine/indicators/N1_percent[0]}):>15

sw_checklist:LANDING CHECKLIST
sw_item:CABIN CREW|ADVISED
sw_item:A/THR|SPEED / OFF
sw_item:AUTOBRAKE|AS RQRD
sw_item:LDG GEAR|DOWN / 3 GREEN:(sim/flightmodel2/gear/deploy_ratio[0]:>0.95)&&(sim/flightmodel2/gear/deploy_ratio[1]:>0.95)
sw_item:FLAPS|25/30:sim/cockpit2/controls/flap_ratio:0.75||sim/cockpit2/controls/flap_ratio:1
sw_item:SPD BRAKE|ARMED:sim/cockpit2/controls/speedbrake_ratio:-0.5
]]

-- In Latin-1, with signs that systems files would take for their own.
clists.latin = "sw_checklist:Pr\xE9vol:menu\r\nsw_item:V1 / VR SPEEDS|SET\r\nsw_item:EFB...\r\n"
    .. "sw_item:CEINTURES ATTACH\xC9ES|OUI / NON\r\nsw_itemvoid:A: LEFT|RIGHT <<< ### >>>\r\n"
    .. "sw_item_c:\\red\\STALL [TEST] = 1\\\\|PERFORM\r\nsw_remark:Do not exceed VNE; 120 KTS\r\n"

return clists
