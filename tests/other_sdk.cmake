# The plug-in's sources also compile against a real SDK, which keeps its headers in two folders. One of that
# layout is made from sdk/, and against it are compiled as many of them as it takes to have included every header of
# the interface that the plug-in knows.
#   cmake -DSOURCE=<checkout> -DBUILD=<scratch folder> -DNINJA=<ninja> -P other_sdk.cmake
cmake_minimum_required(VERSION 3.25)

set(sdk ${BUILD}/SDK)
file(GLOB core_headers ${SOURCE}/sdk/XPLM*.h)
file(GLOB widget_headers ${SOURCE}/sdk/XP*.h)
list(REMOVE_ITEM widget_headers ${core_headers})
file(COPY ${core_headers} DESTINATION ${sdk}/CHeaders/XPLM)
file(COPY ${widget_headers} DESTINATION ${sdk}/CHeaders/Widgets)

set(objects "")
set(included "")
file(GLOB sources RELATIVE ${SOURCE} ${SOURCE}/util/*.cpp ${SOURCE}/frame/*.cpp ${SOURCE}/voice/*.cpp
     ${SOURCE}/systems/*.cpp ${SOURCE}/figure/*.cpp ${SOURCE}/gfx/*.cpp)
foreach(source IN LISTS sources)
    file(STRINGS ${SOURCE}/${source} includes REGEX "^#include \"(.*/)?XP")
    if(includes MATCHES "/XP")
        message(FATAL_ERROR "${source} knows where the headers are: ${includes}")
    endif()
    list(REMOVE_ITEM includes "" ${included})
    if(includes)
        list(APPEND included ${includes})
        list(APPEND objects CMakeFiles/fennic_code.dir/${source}.o)
    endif()
endforeach()

execute_process(
    COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE} -B ${BUILD} -DXPLANE_SDK=${sdk} -DFENNIC_SIMHOST=OFF
            -DSPEECH_SOURCES= -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DFENNIC_FOLDERS_AS_ONE=OFF
            -DCCACHE= # a compiler cache may name headers by other paths, which are compared below
            -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-fsyntax-only
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target ${objects} COMMAND_ERROR_IS_FATAL ANY)

# Had one reached past the include folders, it would have been compiled against sdk/ after all.
execute_process(COMMAND ${NINJA} -C ${BUILD} -t deps ${objects} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
if(NOT headers MATCHES "${sdk}/CHeaders/XPLM/" OR NOT headers MATCHES "${sdk}/CHeaders/Widgets/"
   OR headers MATCHES "${SOURCE}/sdk/")
    message(FATAL_ERROR "not compiled against ${sdk} alone:\n${headers}")
endif()
