# Packages as a pilot gets them: the same bytes each time they are made, complete by their own checksums, and in a
# fresh aircraft's folder she flies, with a voice where there is one.
#   cmake -DSOURCE=<checkout> -DSTAGED=<staged aircraft> -DWORK=<scratch> -DSIM=<fennic-sim>
#         -DCHECKSUMS=<shipped_checksums> -DBUILT=<folder with fennic-sim and the staged aircraft>
#         [-DSPEECH=<staged fennic_speech> -DENGINES=<sources of the engines>] -P package.cmake
cmake_minimum_required(VERSION 3.25)
set(quick -DZIP_LEVEL=0) # libraries with sanitizers are large
set(aircraft Cessna_172SP)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${STAGED}/${aircraft} DESTINATION ${WORK}/staged)
foreach(time first second)
    run(${CMAKE_COMMAND} ${quick} -DSOURCE=${SOURCE} -DSTAGED=${WORK}/staged -DANY=${STAGED}/../any -DOUT=${WORK}/${time} -P
        ${SOURCE}/cmake/package.cmake)
    file(TOUCH ${WORK}/staged/${aircraft}/plugins/fennic/64/data/settings_mac.txt)
endforeach()

# Unzips the package in the folder of an aircraft, looks at it, and flies.
function(try_package name folder flight)
    file(GLOB package RELATIVE ${WORK}/first ${WORK}/first/Fennic-*-${name}.zip)
    run(${CMAKE_COMMAND} -E compare_files ${WORK}/first/${package} ${WORK}/second/${package})
    set(plugins ${folder}/plugins)
    file(MAKE_DIRECTORY ${plugins})
    run(${CMAKE_COMMAND} -E chdir ${plugins} ${CMAKE_COMMAND} -E tar xf ${WORK}/first/${package})
    run(${CMAKE_COMMAND} -E chdir ${plugins}/fennic sha256sum --check --quiet checksums.txt)
    # The next version must know each of these files as an earlier one.
    execute_process(COMMAND ${CHECKSUMS} ${plugins}/fennic/64/shipped OUTPUT_VARIABLE shipped
                    COMMAND_ERROR_IS_FATAL ANY)
    file(STRINGS ${SOURCE}/cmake/shipped_versions.txt versions)
    string(REPLACE "\n" ";" shipped "${shipped}")
    foreach(line IN LISTS shipped)
        if(NOT line MATCHES "versions.txt$" AND NOT line IN_LIST versions AND NOT line STREQUAL "")
            message(FATAL_ERROR "not in cmake/shipped_versions.txt; run ./fennic versions: ${line}")
        endif()
    endforeach()
    # What the user makes has no place in the zip file, so that the next one does not take it.
    file(GLOB_RECURSE live ${plugins}/fennic/64/systems/* ${plugins}/fennic/64/custom/positions-*/*
         ${plugins}/fennic/64/custom/places.txt ${plugins}/fennic/64/data/settings_mac.txt ${plugins}/fennic/64/data/aircraft.txt
         ${plugins}/fennic/64/data/obj/acf.txt)
    if(live)
        message(FATAL_ERROR "an update would replace the user's ${live}")
    endif()
    run(${SIM} --quiet --aircraft ${folder} ${flight})
endfunction()

file(COPY ${SOURCE}/aircraft/${aircraft} DESTINATION ${WORK}/simulator)
file(REMOVE_RECURSE ${WORK}/simulator/${aircraft}/systems)
try_package(${aircraft} ${WORK}/simulator/${aircraft} ${SOURCE}/flights/first_start.lua)

# One that no table knows, with a checklist of its own.
set(unknown ${WORK}/simulator/Zephyr)
file(WRITE ${unknown}/zephyr.acf "I\n1200 Version\nACF\n\nPROPERTIES_BEGIN\nP acf/_descrip Zephyr Nine\nPROPERTIES_END\n")
file(WRITE ${unknown}/clist.txt "sw_checklist:Before Start\nsw_item:DOORS|CLOSED\nsw_item:FUEL PUMP|ON\n")
try_package(any-aircraft ${unknown} ${SOURCE}/tests/package_any_aircraft.lua)

# An author's: away from the sources, on a system without OpenGL and GLFW, from nothing to an aircraft that flies.
run(${CMAKE_COMMAND} ${quick} -DSOURCE=${SOURCE} -DBUILT=${BUILT} -DOUT=${WORK}/first -P ${SOURCE}/cmake/package_authors.cmake)
file(GLOB package ${WORK}/first/Fennic-authors-*-linux.zip)
run(${CMAKE_COMMAND} -E chdir ${WORK} ${CMAKE_COMMAND} -E tar xf ${package})
set(authors ${WORK}/fennic-authors)
run(${CMAKE_COMMAND} -E chdir ${authors} sha256sum --check --quiet checksums.txt)
foreach(library libGL.so.1 libEGL.so.1 libglfw.so.3)
    file(WRITE ${WORK}/broken/${library} "") # found before the system's, and not to be loaded
endforeach()
function(author) # author(STATUS EXPECTED-TEXT COMMAND...): what is printed must match the text
    list(POP_FRONT ARGN status text)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${WORK}/broken ./fennic-sim ${ARGN}
                    WORKING_DIRECTORY ${authors} RESULT_VARIABLE result OUTPUT_VARIABLE told ERROR_VARIABLE told)
    if(NOT result STREQUAL status OR NOT told MATCHES "${text}")
        message(FATAL_ERROR "fennic-sim ${ARGN}: ${result}\n${told}")
    endif()
endfunction()
author(0 "Skylark is a new aircraft" new Skylark)
author(1 "Skylark is not empty" new Skylark)
author(0 "0 errors, 0 warnings" check Skylark)
author(0 "no OpenGL here .*Before start checklist complete, Sir" Skylark/flight.lua)
author(2 "no window: .*libGL" --window Skylark/flight.lua)
author(0 "before start checklist" phrases Skylark)
author(0 "" flights/checklist.lua)
file(WRITE ${authors}/clist.txt "sw_checklist:Parking\nsw_item:PARKING BRAKE|SET:sim/cockpit2/controls/parking_brake_ratio:>0.5\n")
author(0 "another" new --empty --name "Another one" another)
author(0 "1 checklists with 1 items and 1 of 1 conditions" import clist.txt another)
author(0 "0 errors, 0 warnings" check another)

if(SPEECH)
    run(${CMAKE_COMMAND} ${quick} -DSOURCE=${SOURCE} -DSTAGED=${SPEECH} -DENGINES=${ENGINES} -DOUT=${WORK}/first -P
        ${SOURCE}/cmake/package_speech.cmake)
    file(GLOB package RELATIVE ${WORK}/first ${WORK}/first/Fennic-speech-*-linux.zip)
    set(plugins ${WORK}/simulator/Resources/plugins)
    file(MAKE_DIRECTORY ${plugins})
    run(${CMAKE_COMMAND} -E chdir ${plugins} ${CMAKE_COMMAND} -E tar xf ${WORK}/first/${package})
    set(speech ${plugins}/fennic_speech)
    run(${CMAKE_COMMAND} -E chdir ${speech} sha256sum --check --quiet checksums.txt)
    foreach(licence fennic pocketsphinx sphinxbase speexdsp model flite_and_its_voices portaudio)
        if(NOT EXISTS ${speech}/licences/${licence}.txt)
            message(FATAL_ERROR "no licence of ${licence}")
        endif()
    endforeach()
    # The program finds its files, says a sentence, and understands it when it hears it.
    set(voice ${speech}/64/fennic-voice)
    file(WRITE ${WORK}/say.txt "say>Before start checklist.\n")
    execute_process(COMMAND ${voice} --loudspeaker ${WORK}/said.wav INPUT_FILE ${WORK}/say.txt
                    COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${voice} --check --microphone ${WORK}/said.wav --loudspeaker ${WORK}/check.wav
                    OUTPUT_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
    message(STATUS "${told}")
    if(NOT told MATCHES "understood +\"before start checklist\"")
        message(FATAL_ERROR "it does not understand itself")
    endif()
endif()
