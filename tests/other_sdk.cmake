# The plug-in's sources also compile against a real SDK, which keeps its headers in two folders. One of that
# layout is made from sdk/, and everything that includes a header of the interface is compiled against it. What
# comes of it is looked at as well (exports.cmake), since it holds the C++ runtime, which a library with
# sanitizers does not.
#   cmake -DSOURCE=<checkout> -DBUILD=<scratch folder> -DNINJA=<ninja> -DNM=<nm> -DREADELF=<readelf> -P other_sdk.cmake
cmake_minimum_required(VERSION 3.25)

set(sdk ${BUILD}/SDK)
file(GLOB core_headers ${SOURCE}/sdk/XPLM*.h)
file(GLOB widget_headers ${SOURCE}/sdk/XP*.h)
list(REMOVE_ITEM widget_headers ${core_headers})
file(COPY ${core_headers} DESTINATION ${sdk}/CHeaders/XPLM)
file(COPY ${widget_headers} DESTINATION ${sdk}/CHeaders/Widgets)

set(objects "")
file(GLOB sources RELATIVE ${SOURCE} ${SOURCE}/util/*.cpp ${SOURCE}/frame/*.cpp ${SOURCE}/voice/*.cpp
     ${SOURCE}/systems/*.cpp ${SOURCE}/figure/*.cpp ${SOURCE}/gfx/*.cpp)
foreach(source IN LISTS sources)
    file(STRINGS ${SOURCE}/${source} includes REGEX "^#include \"XP")
    if(includes)
        list(APPEND objects CMakeFiles/fennic_code.dir/${source}.o)
    endif()
endforeach()

execute_process(
    COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE} -B ${BUILD} -DXPLANE_SDK=${sdk} -DFENNIC_SIMHOST=OFF
            -DCCACHE= # a compiler cache may name headers by other paths, which are compared below
            -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target ${objects} COMMAND_ERROR_IS_FATAL ANY)

# Had a source reached past the include folders, it would have been compiled against sdk/ after all.
execute_process(COMMAND ${NINJA} -C ${BUILD} -t deps ${objects} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
if(NOT headers MATCHES "${sdk}/CHeaders/XPLM/" OR headers MATCHES "${SOURCE}/sdk/")
    message(FATAL_ERROR "not compiled against ${sdk} alone:\n${headers}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target fennic COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -DNM=${NM} -DREADELF=${READELF} -DLIBRARY=${BUILD}/lin.xpl -Dnewest_wanted=2.31 -P
                        ${CMAKE_CURRENT_LIST_DIR}/exports.cmake COMMAND_ERROR_IS_FATAL ANY)
