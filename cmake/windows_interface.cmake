# What a plug-in for Windows is linked with: the import libraries of the simulator's two DLLs, made from our
# declarations of what they offer.
include(${CMAKE_CURRENT_LIST_DIR}/interface_names.cmake)
find_program(DLLTOOL NAMES ${CMAKE_C_COMPILER_TARGET}-dlltool dlltool REQUIRED)

file(GLOB core_headers ${CMAKE_SOURCE_DIR}/sdk/XPLM*.h)
file(GLOB widget_headers ${CMAKE_SOURCE_DIR}/sdk/XP*.h)
list(REMOVE_ITEM widget_headers ${core_headers})

foreach(definition UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
    add_compile_definitions($<$<COMPILE_LANGUAGE:CXX>:${definition}>) # of all, which share precompiled headers
endforeach()
add_library(interface_libraries INTERFACE)
foreach(library XPLM_64 XPWidgets_64)
    if(library STREQUAL "XPLM_64")
        interface_names(names ${core_headers})
    else()
        interface_names(names ${widget_headers})
    endif()
    list(JOIN names "\n" names)
    set(definition ${CMAKE_BINARY_DIR}/${library}.def)
    file(CONFIGURE OUTPUT ${definition} CONTENT "LIBRARY ${library}.dll\nEXPORTS\n@names@\n" @ONLY)
    execute_process(COMMAND ${DLLTOOL} -d ${definition} -l ${CMAKE_BINARY_DIR}/lib${library}.a
                    COMMAND_ERROR_IS_FATAL ANY)
    target_link_libraries(interface_libraries INTERFACE ${CMAKE_BINARY_DIR}/lib${library}.a)
endforeach()
