# Runs a maker of shipped data into an empty folder, and compares what it writes with what is committed.
#   cmake -DMAKER=<program> -DCOMMITTED=<folder> -DMADE=<folder> -P made_again.cmake
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${MADE})
execute_process(COMMAND ${MAKER} ${MADE} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE files RELATIVE ${MADE} ${MADE}/*)
if(NOT files)
    message(FATAL_ERROR "${MAKER} made nothing")
endif()
foreach(file IN LISTS files)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${MADE}/${file} ${COMMITTED}/${file}
                    RESULT_VARIABLE differs)
    if(differs)
        message(SEND_ERROR "${file} is not what its maker makes")
    endif()
endforeach()
