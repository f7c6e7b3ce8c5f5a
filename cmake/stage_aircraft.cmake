# Puts each aircraft folder together as the simulator wants it: the aircraft's own files, and the plug-in
# with its library, data/, custom/ and the aircraft's systems/ under plugins/fennic/64/.
# Made afresh at each build, so that a file removed from the sources is gone here too.
#
# The voices of data/ are those of a Mac. Elsewhere the list is another one, and so are the voices of the
# settings.
#
# A system that an aircraft lists in systems/_systems.txt and has no file for comes from aircraft/shared/.
#
# The systems for all other aircraft, aircraft/any/, are put together in <ANY>/systems/, and the list of aircraft
# that goes with them in <ANY>/data/.

# Completes a folder of systems files.
function(add_shared_systems name systems_folder)
    file(STRINGS ${systems_folder}/_systems.txt systems)
    foreach(system IN LISTS systems)
        if(EXISTS ${systems_folder}/${system}.txt)
            continue()
        elseif(NOT EXISTS ${SOURCE}/aircraft/shared/${system}.txt)
            message(FATAL_ERROR "aircraft/${name}/systems/_systems.txt lists ${system}, which is "
                                "neither there nor in aircraft/shared/")
        endif()
        file(COPY ${SOURCE}/aircraft/shared/${system}.txt DESTINATION ${systems_folder})
    endforeach()
endfunction()

foreach(folder IN LISTS AIRCRAFT)
    set(staged ${TARGET}/${folder})
    set(plugin ${staged}/plugins/fennic/64)
    file(REMOVE_RECURSE ${staged})
    file(COPY ${SOURCE}/aircraft/${folder} DESTINATION ${TARGET})
    file(MAKE_DIRECTORY ${staged}/objects ${plugin}/systems)
    file(COPY ${LIBRARY} ${SOURCE}/data ${SOURCE}/custom DESTINATION ${plugin})
    if(NOT SYSTEM STREQUAL "Darwin")
        file(COPY_FILE ${SOURCE}/speech/data/voicelist_linux.txt ${plugin}/data/voicelist_mac.txt)
        foreach(settings settings_mac.txt settings_win.txt)
            file(READ ${plugin}/data/${settings} text)
            string(REPLACE ".voice.samantha" ".voice.woman" text "${text}")
            string(REPLACE ".voice.daniel" ".voice.man" text "${text}")
            string(REGEX REPLACE "\r?\n" "\r\n" text "${text}") # as she writes them herself
            file(WRITE ${plugin}/data/${settings} "${text}")
        endforeach()
    endif()
    file(COPY_FILE ${SOURCE}/VERSION ${plugin}/version.txt)
    file(COPY_FILE ${SOURCE}/CHANGELOG.md ${plugin}/CHANGELOG.txt)
    # The aircraft that carries the figure itself: its .acf attaches her, and needs no setup.
    if(folder STREQUAL "KV340-500")
        file(GLOB figure ${SOURCE}/data/obj/kvfennic*)
        file(COPY ${figure} DESTINATION ${staged}/objects)
    endif()
    if(EXISTS ${staged}/systems)
        file(COPY ${staged}/systems DESTINATION ${plugin})
        file(REMOVE_RECURSE ${staged}/systems)
        add_shared_systems(${folder} ${plugin}/systems)
    endif()
endforeach()

file(REMOVE_RECURSE ${ANY})
file(COPY ${SOURCE}/aircraft/any/systems DESTINATION ${ANY})
file(COPY ${SOURCE}/aircraft/any/aircraft.txt DESTINATION ${ANY}/data)
add_shared_systems(any ${ANY}/systems)
