# What the headless simulator takes from other people, for Windows: Lua and GeographicLib from the sources that
# Debian makes its own from, since it keeps none for MinGW. Sets SIMHOST_LIBRARIES.
set(WINDOWS_SOURCES "${CMAKE_SOURCE_DIR}/build/windows_sources" CACHE PATH "lua/ and geographiclib/; ./fennic fetches them")

file(GLOB lua_sources ${WINDOWS_SOURCES}/lua/src/*.c)
list(FILTER lua_sources EXCLUDE REGEX "/luac?\\.c$")
add_library(lua STATIC ${lua_sources})
target_include_directories(lua SYSTEM PUBLIC ${WINDOWS_SOURCES}/lua/src)
target_compile_options(lua PRIVATE -w)

set(geographiclib ${WINDOWS_SOURCES}/geographiclib)
set(made ${CMAKE_CURRENT_BINARY_DIR}/geographiclib)
file(CONFIGURE OUTPUT ${made}/GeographicLib/Config.h CONTENT "#define GEOGRAPHICLIB_VERSION_STRING \"\"
#define GEOGRAPHICLIB_HAVE_LONG_DOUBLE 1
#define GEOGRAPHICLIB_WORDS_BIGENDIAN 0
#define GEOGRAPHICLIB_PRECISION 2
#define GEOGRAPHICLIB_SHARED_LIB 0
#define GEOGRAPHICLIB_STATIC_LIB 1
")
add_library(geographiclib STATIC ${geographiclib}/src/Geocentric.cpp ${geographiclib}/src/LocalCartesian.cpp
            ${geographiclib}/src/Math.cpp ${geographiclib}/src/Utility.cpp)
target_include_directories(geographiclib SYSTEM PUBLIC ${geographiclib}/include ${made})
target_compile_options(geographiclib PRIVATE -w)

set(SIMHOST_LIBRARIES lua geographiclib opengl32 gdi32 user32 shell32)

# Names of files are UTF-8 (simhost/utf8_names_windows.cpp).
list(APPEND SIMHOST_LIBRARIES -Wl,--wrap=fopen -Wl,--wrap=remove -Wl,--wrap=rename)

# Nobody ships the simulator: it is compiled without optimisation, and reads the standard library's headers once.
# A warning ends no build here: they are looked for on Linux.
function(compile_quickly target)
    target_compile_options(${target} PRIVATE -O0 -Wno-error)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <cmath> <cstdio> <cstring> <deque> <filesystem>
                              <fstream> <functional> <map> <memory> <optional> <set> <span> <sstream> <string>
                              <string_view> <utility> <variant> <vector>)
endfunction()
