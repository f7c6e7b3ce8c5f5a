# The zip file of her voice for a Mac, as a pilot unzips it: what must be there is there, of the right bytes, and what
# is to be run can be.
#   cmake -DSOURCE=<checkout> -DSTAGED=<fennic_speech> -DWORK=<scratch> -P mac_package.cmake
cmake_minimum_required(VERSION 3.25)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} -DZIP_LEVEL=1 -DSOURCE=${SOURCE} -DSTAGED=${STAGED} -DENGINES=${SOURCE}/build/speech_sources
    -DOUT=${WORK} -P ${SOURCE}/cmake/package_speech.cmake)
file(GLOB package ${WORK}/Fennic-speech-*-mac*.zip)
run(${CMAKE_COMMAND} -E chdir ${WORK} ${CMAKE_COMMAND} -E tar xf ${package})
run(${CMAKE_COMMAND} -E chdir ${WORK}/fennic_speech sha256sum --check --quiet checksums.txt)
set(bundle 64/fennic-voice.app/Contents)
foreach(file 64/mac.xpl ${bundle}/Info.plist ${bundle}/_CodeSignature/CodeResources model/cmudict-en-us.dict settings.txt
        pronunciations.txt licences/portaudio.txt)
    if(NOT EXISTS ${WORK}/fennic_speech/${file})
        message(SEND_ERROR "the zip file lacks ${file}")
    endif()
endforeach()
run(test -x ${WORK}/fennic_speech/${bundle}/MacOS/fennic-voice)
file(REMOVE_RECURSE ${WORK})
