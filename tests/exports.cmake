# What the plug-in's library shows the simulator's process: the five entry points and nothing else, and what
# it wants from it: the simulator's interface and the system's own libraries.
#   cmake -DNM=<nm> -DREADELF=<readelf> -DLIBRARY=<lin.xpl> -P exports.cmake
function(output result)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "\n" ";" lines "${lines}")
    set(${result} "${lines}" PARENT_SCOPE)
endfunction()

output(exported ${NM} -D --defined-only --format=just-symbols ${LIBRARY})
list(REMOVE_ITEM exported "")
list(SORT exported)
set(entry_points XPluginDisable XPluginEnable XPluginReceiveMessage XPluginStart XPluginStop)
if(NOT exported STREQUAL entry_points)
    message(SEND_ERROR "exported: ${exported}\nexpected: ${entry_points}")
endif()

# A symbol of the system's libraries carries its version behind "@"; all others must be the simulator's.
# The sanitizers' runtime, and weak hooks of the compiler's start-up code, have no version either.
output(wanted ${NM} -D --undefined-only --format=just-symbols ${LIBRARY})
set(interface 0)
foreach(symbol IN LISTS wanted)
    if(symbol MATCHES "^XP(LM)?[A-Z][A-Za-z0-9]+$")
        math(EXPR interface "${interface} + 1")
    elseif(NOT symbol MATCHES "@|^$|^__(asan|ubsan|lsan|sanitizer)_|^_ITM_|^__gmon_start__$")
        message(SEND_ERROR "wanted, but offered neither by the simulator nor by the system: ${symbol}")
    endif()
endforeach()
if(interface EQUAL 0)
    message(SEND_ERROR "no call of the simulator's interface found among ${wanted}")
endif()

output(dynamic ${READELF} --dynamic --wide ${LIBRARY})
foreach(line IN LISTS dynamic)
    if(line MATCHES "\\(NEEDED\\).*\\[(.*)\\]"
       AND NOT CMAKE_MATCH_1 MATCHES "^(libc|libm|libstdc\\+\\+|libgcc_s|libasan|libubsan|ld-linux-[a-z0-9-]+)\\.so")
        message(SEND_ERROR "needs a library that a user may not have: ${CMAKE_MATCH_1}")
    endif()
endforeach()
