# Which flights are flown as tests, and how, on whatever system. Before, set
#   STAGED               the build folder of the simulator, with aircraft/ and any/
#   AIRCRAFT_FOLDERS     the names of the folders under aircraft/
#   HAS_VOICE            whether plugins/fennic_speech/ is there, too
# and define add_flight(<name of the test> <word of fennic-sim's command line>...).

set(long_flight_options --fps 2)
set(position_creator_options --fps 20)

# Some are flown in several aircraft, the others in the Cessna.
set(airliner_aircraft ${AIRCRAFT_FOLDERS})
list(REMOVE_ITEM airliner_aircraft Cessna_172SP)
set(airliner_options --fps 5)
set(airliner_callouts_aircraft ${airliner_aircraft})
set(airliner_callouts_options --fps 5)
set(airliner_runways_options --fps 20)
set(airliner_runways_aircraft 737_Level_Up O737X)
set(cessna_172_options --fps 20)
set(crew_words_aircraft Cessna_172SP TL319)
set(crew_words_options --fps 20)
set(any_aircraft_options --fps 20)
set(kill_switch_options --fps 20)
set(any_aircraft_arguments ${STAGED}/any/systems)

# Those with her voice are skipped where it was not built. The demo is flown without it.
set(voice_checklist_options --fps 20)
set(voice_hangs_options --fps 10 --real-time)
if(HAS_VOICE)
    foreach(flight voice_checklist voice_hangs voice_helper voice_missing)
        list(APPEND ${flight}_options --plugin fennic_speech)
    endforeach()
endif()

file(GLOB FLIGHTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.lua)
foreach(flight IN LISTS FLIGHTS)
    get_filename_component(name ${flight} NAME_WE)
    if(DEFINED ${name}_aircraft)
        foreach(aircraft IN LISTS ${name}_aircraft)
            add_flight(${name}.${aircraft} --aircraft ${aircraft} ${${name}_options} ${flight} ${${name}_arguments})
        endforeach()
    else()
        add_flight(${name} ${${name}_options} ${flight} ${${name}_arguments})
    endif()
endforeach()
