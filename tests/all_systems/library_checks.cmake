# What the tests of the libraries share, for this system and for others.

function(output_lines result)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "\n$" "" lines "${lines}")
    string(REPLACE "\n" ";" lines "${lines}")
    set(${result} "${lines}" PARENT_SCOPE)
endfunction()

function(expect what found expected)
    list(SORT found)
    list(SORT expected)
    if(NOT found STREQUAL expected)
        message(SEND_ERROR "${what}: ${found}\nexpected: ${expected}")
    endif()
endfunction()

# The library's bytes hold no path of the machine that made it. SOURCE is the checkout.
function(expect_no_paths library)
    get_filename_component(home "$ENV{HOME}" REALPATH)
    foreach(folder ${SOURCE} ${home} /tmp)
        string(LENGTH ${folder} length)
        if(length GREATER 1)
            string(REGEX REPLACE "([^A-Za-z0-9/_])" "\\\\\\1" folder ${folder})
            file(STRINGS ${library} paths LIMIT_COUNT 5 REGEX "${folder}/")
            list(FILTER paths EXCLUDE REGEX "/tmp/__EnDiAn_TeSt__") # of sphinxbase
            if(paths)
                message(SEND_ERROR "it tells where it was made: ${paths}")
            endif()
        endif()
    endforeach()
endfunction()
