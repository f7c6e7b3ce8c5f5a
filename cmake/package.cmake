# Makes one zip file for each staged aircraft: the folder plugins/fennic, to be unzipped in the aircraft's
# folder. The same files give the same bytes: entries are sorted, and their time is a fixed one.
#   cmake -DSOURCE=<checkout> -DSTAGED=<folder of staged aircraft> -DOUT=<folder> [-DLIBRARIES=<more .xpl>]
#         -P package.cmake
cmake_minimum_required(VERSION 3.25)

file(STRINGS ${SOURCE}/VERSION VERSION LIMIT_COUNT 1)
find_program(ZIP zip REQUIRED)
file(GLOB folders RELATIVE ${STAGED} ${STAGED}/*)
file(MAKE_DIRECTORY ${OUT})

foreach(folder IN LISTS folders)
    set(root ${OUT}/unpacked)
    file(GLOB_RECURSE states ${STAGED}/${folder}/plugins/*/Log.txt ${STAGED}/${folder}/plugins/*/_save.txt
         ${STAGED}/${folder}/plugins/*/context.txt)
    if(states)
        message(FATAL_ERROR "somebody has flown with this folder: ${states}")
    endif()
    set(fennic ${root}/plugins/fennic)
    file(REMOVE_RECURSE ${root})
    file(COPY ${STAGED}/${folder}/plugins DESTINATION ${root})
    if(LIBRARIES)
        file(COPY ${LIBRARIES} DESTINATION ${fennic}/64)
    endif()

    file(GLOB aircraft_file ${STAGED}/${folder}/*.acf)
    file(STRINGS ${aircraft_file} DESCRIPTION REGEX "^P acf/_descrip ")
    string(REPLACE "P acf/_descrip " "" DESCRIPTION "${DESCRIPTION}")
    string(REPLACE "737-800NG" "737-600NG, -700NG, -800NG, -900NG or -900ER" DESCRIPTION "${DESCRIPTION}")
    cmake_path(GET aircraft_file FILENAME ACF)
    file(GLOB libraries RELATIVE ${fennic}/64 ${fennic}/64/*.xpl)
    list(TRANSFORM libraries REPLACE "^lin.xpl$" "Linux")
    list(TRANSFORM libraries REPLACE "^mac.xpl$" "macOS")
    list(JOIN libraries " and " SYSTEMS)
    configure_file(${SOURCE}/cmake/package_readme.txt.in ${fennic}/readme.txt @ONLY)
    file(MAKE_DIRECTORY ${fennic}/licences)
    file(COPY_FILE ${SOURCE}/LICENSE ${fennic}/licences/fennic.txt)
    file(COPY ${SOURCE}/cmake/licences/ DESTINATION ${fennic}/licences)

    file(GLOB_RECURSE files RELATIVE ${fennic} ${fennic}/*)
    set(checksums "")
    foreach(file IN LISTS files)
        file(SHA256 ${fennic}/${file} checksum)
        string(APPEND checksums "${checksum}  ${file}\n")
    endforeach()
    file(WRITE ${fennic}/checksums.txt "${checksums}")

    set(zip_file ${OUT}/Fennic-${VERSION}-${folder}.zip)
    file(REMOVE ${zip_file})
    file(GLOB_RECURSE files RELATIVE ${root} ${root}/*)
    list(JOIN files "\n" list)
    file(WRITE ${OUT}/files.txt "${list}\n")
    execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=UTC find ${root} -exec touch -t 202601010000 {} +
                    COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND find ${root} -type f -exec chmod 644 {} + COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env TZ=UTC ${ZIP} -q -X -9 ${zip_file} -@
                    WORKING_DIRECTORY ${root} INPUT_FILE ${OUT}/files.txt COMMAND_ERROR_IS_FATAL ANY)
    message(STATUS "${zip_file}")
endforeach()
file(REMOVE_RECURSE ${OUT}/unpacked ${OUT}/files.txt)
