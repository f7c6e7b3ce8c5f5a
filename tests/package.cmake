# A package as a pilot gets it: the same bytes each time it is made, complete by its own checksums, and in a
# fresh aircraft's folder it flies.
#   cmake -DSOURCE=<checkout> -DSTAGED=<staged aircraft> -DWORK=<scratch> -DSIM=<fennic-sim> -P package.cmake
cmake_minimum_required(VERSION 3.25)
set(aircraft Cessna_172SP)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${STAGED}/${aircraft} DESTINATION ${WORK}/staged)
foreach(time first second)
    run(${CMAKE_COMMAND} -DSOURCE=${SOURCE} -DSTAGED=${WORK}/staged -DOUT=${WORK}/${time} -P
        ${SOURCE}/cmake/package.cmake)
    file(TOUCH ${WORK}/staged/${aircraft}/plugins/fennic/64/data/settings_mac.txt)
endforeach()
file(GLOB package RELATIVE ${WORK}/first ${WORK}/first/Fennic-*-${aircraft}.zip)
run(${CMAKE_COMMAND} -E compare_files ${WORK}/first/${package} ${WORK}/second/${package})

file(COPY ${SOURCE}/aircraft/${aircraft} DESTINATION ${WORK}/simulator)
file(REMOVE_RECURSE ${WORK}/simulator/${aircraft}/systems)
run(${CMAKE_COMMAND} -E chdir ${WORK}/simulator/${aircraft} ${CMAKE_COMMAND} -E tar xf ${WORK}/first/${package})
run(${CMAKE_COMMAND} -E chdir ${WORK}/simulator/${aircraft}/plugins/fennic sha256sum --check --quiet checksums.txt)
run(${SIM} --quiet --aircraft ${WORK}/simulator/${aircraft} ${SOURCE}/flights/first_start.lua)
