# Makes one zip file for each staged aircraft, and one for any other: the folder fennic, to be unzipped in the
# folder plugins of the aircraft. What its user may change is not where it will be read: the settings lie in
# custom/, from where the first start takes them, and systems, positions, presets, the list of aircraft and the
# figure's place in shipped/, from where each start puts them in their places unless the user's own are there. So
# a zip file unzipped over an older one takes nothing away.
#   cmake -DSOURCE=<checkout> -DSTAGED=<folder of staged aircraft> -DANY=<the systems for any other> -DOUT=<folder>
#         [-DLIBRARIES=<more .xpl>] -P package.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/package_zip.cmake)

file(STRINGS ${SOURCE}/VERSION VERSION LIMIT_COUNT 1)
file(GLOB folders RELATIVE ${STAGED} ${STAGED}/*)
list(GET folders 0 first)
file(MAKE_DIRECTORY ${OUT})

foreach(folder IN LISTS folders ITEMS any-aircraft)
    set(root ${OUT}/unpacked)
    file(GLOB_RECURSE states ${STAGED}/${folder}/plugins/*/Log.txt ${STAGED}/${folder}/plugins/*/_save.txt
         ${STAGED}/${folder}/plugins/*/context.txt)
    if(states)
        message(FATAL_ERROR "somebody has flown with this folder: ${states}")
    endif()
    set(fennic ${root}/fennic)
    file(REMOVE_RECURSE ${root})
    if(folder STREQUAL "any-aircraft") # of an aircraft's, all but what is the aircraft's own
        file(COPY ${STAGED}/${first}/plugins/fennic DESTINATION ${root})
        file(REMOVE_RECURSE ${fennic}/64/systems)
        file(COPY ${ANY}/systems ${ANY}/data DESTINATION ${fennic}/64)
    else()
        file(COPY ${STAGED}/${folder}/plugins/fennic DESTINATION ${root})
    endif()
    if(LIBRARIES)
        file(COPY ${LIBRARIES} DESTINATION ${fennic}/64)
    endif()
    if(LIBRARIES MATCHES "mac\\.xpl") # for a Mac and for Linux: the voices of both, and a Mac's in the settings
        file(READ ${SOURCE}/data/voicelist_mac.txt voices)
        file(READ ${SOURCE}/speech/data/voicelist_linux.txt more_voices)
        file(WRITE ${fennic}/64/data/voicelist_mac.txt "${voices}${more_voices}")
        file(COPY ${SOURCE}/data/settings_mac.txt ${SOURCE}/data/settings_win.txt DESTINATION ${fennic}/64/data)
    endif()

    file(MAKE_DIRECTORY ${fennic}/64/shipped/custom ${fennic}/64/shipped/data/obj)
    file(GLOB poses RELATIVE ${fennic}/64/custom ${fennic}/64/custom/*)
    foreach(part IN LISTS poses)
        file(RENAME ${fennic}/64/custom/${part} ${fennic}/64/shipped/custom/${part})
    endforeach()
    file(RENAME ${fennic}/64/systems ${fennic}/64/shipped/systems)
    foreach(part aircraft.txt obj/acf.txt)
        if(EXISTS ${fennic}/64/data/${part})
            file(RENAME ${fennic}/64/data/${part} ${fennic}/64/shipped/data/${part})
        endif()
    endforeach()
    file(COPY_FILE ${SOURCE}/cmake/shipped_versions.txt ${fennic}/64/shipped/versions.txt)
    file(RENAME ${fennic}/64/data/settings_mac.txt ${fennic}/64/custom/settings_mac.txt)
    file(COPY_FILE ${fennic}/64/data/settings_win.txt ${fennic}/64/custom/settings_win.txt)

    if(folder STREQUAL "any-aircraft")
        set(DESCRIPTION "any aircraft")
        set(SERVES "She serves every aircraft, also those that nobody has written checklists for: she finds out what it has,
makes the call-outs of a flight, and moves gear, flaps and switches when you ask. The aircraft's own checklists,
where its folder holds a clist.txt, she reads after \"Import Checklist\" in the menu Fennic. For one of the aircraft
that have a zip file of their own, take that.")
        set(FLOWN "She has")
        set(ACF "its .acf file")
    else()
        file(GLOB aircraft_file ${STAGED}/${folder}/*.acf)
        file(STRINGS ${aircraft_file} DESCRIPTION REGEX "^P acf/_descrip ")
        string(REPLACE "P acf/_descrip " "" DESCRIPTION "${DESCRIPTION}")
        string(REPLACE "737-800NG" "737-600NG, -700NG, -800NG, -900NG or -900ER" DESCRIPTION "${DESCRIPTION}")
        set(SERVES "She flies only in aircraft whose description begins with ${DESCRIPTION}.")
        set(FLOWN "Her checklists for this aircraft have")
        cmake_path(GET aircraft_file FILENAME ACF)
    endif()
    file(GLOB libraries RELATIVE ${fennic}/64 ${fennic}/64/*.xpl)
    list(TRANSFORM libraries REPLACE "^lin.xpl$" "Linux")
    list(TRANSFORM libraries REPLACE "^mac.xpl$" "macOS")
    list(TRANSFORM libraries REPLACE "^win.xpl$" "Windows")
    list(JOIN libraries ", " SYSTEMS)
    string(REGEX REPLACE "(.*), " "\\1 and " SYSTEMS "${SYSTEMS}")
    configure_file(${SOURCE}/cmake/package_readme.txt.in ${fennic}/readme.txt @ONLY)
    file(MAKE_DIRECTORY ${fennic}/licences)
    file(COPY_FILE ${SOURCE}/LICENSE ${fennic}/licences/fennic.txt)
    file(COPY ${SOURCE}/cmake/licences/ DESTINATION ${fennic}/licences)

    make_package(${OUT}/Fennic-${VERSION}-${folder}.zip ${root} fennic)
endforeach()
