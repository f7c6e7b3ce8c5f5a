# A package as a pilot on Windows gets it, with the libraries for other systems that have been made: unzipped in
# the folder of an aircraft and flown for the first time. The folder's name has blanks, letters of more than
# one byte and characters that mean something to shells.
#   cmake -DSOURCE=<checkout> -DBUILT=<folder with fennic-sim.exe and the staged aircraft> -DWORK=<scratch>
#         -DWINE=<wine> [-DLIBRARIES=<more .xpl>] -P windows_package.cmake
cmake_minimum_required(VERSION 3.25)
set(aircraft Cessna_172SP)
set(folder "${WORK}/Мои самолёты/Größe XL & 100 % – длинное имя, as long as the simulator's buffers allow it to be")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${BUILT}/aircraft/${aircraft} DESTINATION ${WORK}/staged)
run(${CMAKE_COMMAND} -DSOURCE=${SOURCE} -DSTAGED=${WORK}/staged -DANY=${BUILT}/any -DOUT=${WORK}/zip
    "-DLIBRARIES=${LIBRARIES}" -P ${SOURCE}/cmake/package.cmake)
file(MAKE_DIRECTORY ${folder})
file(COPY ${SOURCE}/aircraft/${aircraft}/ DESTINATION ${folder})
file(REMOVE_RECURSE ${folder}/systems)
file(GLOB package ${WORK}/zip/Fennic-*-${aircraft}.zip)
file(MAKE_DIRECTORY ${folder}/plugins)
run(${CMAKE_COMMAND} -E chdir ${folder}/plugins ${CMAKE_COMMAND} -E tar xf ${package})
run(${WINE} ${BUILT}/fennic-sim.exe --quiet --aircraft ${folder} ${SOURCE}/flights/first_start.lua)
