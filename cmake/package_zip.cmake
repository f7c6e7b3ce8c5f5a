# Makes a zip file of what lies in a folder. The same files give the same bytes: entries are sorted, and their
# time and rights are fixed ones. Beside it, in the folder TOP of the zip file, stand the checksums of all.
find_program(ZIP zip REQUIRED)
if(NOT DEFINED ZIP_LEVEL)
    set(ZIP_LEVEL 9)
endif()

# EXECUTABLES are paths in ROOT of the files that can be run.
function(make_package zip_file root top)
    cmake_parse_arguments(PACKAGE "" "" "EXECUTABLES" ${ARGN})
    file(GLOB_RECURSE files RELATIVE ${root}/${top} ${root}/${top}/*)
    set(checksums "")
    foreach(file IN LISTS files)
        file(SHA256 ${root}/${top}/${file} checksum)
        string(APPEND checksums "${checksum}  ${file}\n")
    endforeach()
    file(WRITE ${root}/${top}/checksums.txt "${checksums}")

    file(REMOVE ${zip_file})
    file(GLOB_RECURSE files RELATIVE ${root} ${root}/*)
    list(JOIN files "\n" list)
    file(WRITE ${root}.txt "${list}\n")
    execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=UTC find ${root} -exec touch -t 202601010000 {} +
                    COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND find ${root} -type f -exec chmod 644 {} + COMMAND_ERROR_IS_FATAL ANY)
    list(TRANSFORM PACKAGE_EXECUTABLES PREPEND ${root}/)
    if(PACKAGE_EXECUTABLES)
        execute_process(COMMAND chmod 755 ${PACKAGE_EXECUTABLES} COMMAND_ERROR_IS_FATAL ANY)
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=UTC ${ZIP} -q -X -${ZIP_LEVEL} ${zip_file} -@
                    WORKING_DIRECTORY ${root} INPUT_FILE ${root}.txt COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE ${root} ${root}.txt)
    message(STATUS "${zip_file}")
endfunction()
