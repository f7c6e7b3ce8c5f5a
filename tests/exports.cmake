# What a plug-in's library shows the simulator's process: the five entry points and nothing else; and what
# it wants from it: the simulator's interface and the system's own libraries, of a C library that is not too
# new for its users. A program of ours wants the latter alone.
#   cmake -DNM=<nm> -DREADELF=<readelf> -DLIBRARY=<lin.xpl, or a program> -Dnewest_wanted=<of the C library>
#         -P exports.cmake
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/all_systems/library_checks.cmake)

output_lines(exported ${NM} -D --defined-only --format=just-symbols ${LIBRARY})
cmake_path(GET LIBRARY EXTENSION is_library)
if(is_library)
    set(entry_points XPluginDisable XPluginEnable XPluginReceiveMessage XPluginStart XPluginStop)
    expect("exported" "${exported}" "${entry_points}")
endif()

output_lines(dynamic ${READELF} --dynamic --wide ${LIBRARY})
foreach(line IN LISTS dynamic)
    if(line MATCHES "\\(NEEDED\\).*\\[(.*)\\]")
        set(needed ${CMAKE_MATCH_1})
        if(NOT needed MATCHES "^(libc|libm|libstdc\\+\\+|libgcc_s|libpthread|libdl|libasan|libubsan|libGL|liblodepng|ld-linux-[a-z0-9-]+)\\.so")
            message(SEND_ERROR "needs a library that a user may not have: ${needed}")
        endif()
    endif()
endforeach()

# On a system with a newer C library than Debian 12 has, the compiler asks for more; packages are not built there.
set(newest_built_with 2.36)
output_lines(built_with getconf GNU_LIBC_VERSION)
string(REGEX REPLACE ".* " "" built_with "${built_with}")
if(built_with VERSION_LESS_EQUAL newest_built_with)
    output_lines(versions ${NM} -D --undefined-only --with-symbol-versions --format=just-symbols ${LIBRARY})
    foreach(symbol IN LISTS versions)
        if(symbol MATCHES "@GLIBC_([0-9.]+)$" AND CMAKE_MATCH_1 VERSION_GREATER newest_wanted)
            message(SEND_ERROR "wants a C library newer than ${newest_wanted}: ${symbol}")
        endif()
    endforeach()
endif()

# What those libraries offer; all else must come from the simulator.
set(offered "")
output_lines(libraries ldd ${LIBRARY})
foreach(line IN LISTS libraries)
    if(line MATCHES "(/[^ ]+) \\(0x")
        output_lines(symbols ${NM} -D --defined-only --format=just-symbols ${CMAKE_MATCH_1})
        list(APPEND offered ${symbols})
    endif()
endforeach()
list(TRANSFORM offered REPLACE "@.*" "")

output_lines(wanted ${NM} -D --undefined-only --format=posix ${LIBRARY})
list(FILTER wanted INCLUDE REGEX " U ") # weak ones need not be there
list(TRANSFORM wanted REPLACE "[ @].*" "")
set(interface 0)
foreach(symbol IN LISTS wanted)
    if(symbol MATCHES "^XP(LM)?[A-Z][A-Za-z0-9]+$")
        math(EXPR interface "${interface} + 1")
    elseif(NOT symbol IN_LIST offered)
        message(SEND_ERROR "wanted, but offered neither by the simulator nor by the system: ${symbol}")
    endif()
endforeach()
if(is_library AND interface EQUAL 0)
    message(SEND_ERROR "no call of the simulator's interface found among ${wanted}")
endif()
