# Toolchain: the plug-in and its voice for macOS 11, made on Linux for one family of processors. zig compiles, since it brings
# the headers of Darwin and a C++ library; ld64.lld links, since zig's own linker would export every symbol of that
# library. The frameworks' declarations and stubs are our own (sdk/mac), those of OpenGL any system's.
#   -DMAC_FAMILY=<arm64|x86_64> -DZIG=<program>
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MAC_FAMILY ZIG)
string(REPLACE "arm64" "aarch64" zig_family ${MAC_FAMILY})

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${MAC_FAMILY})
set(CMAKE_C_COMPILER ${ZIG} cc -target ${zig_family}-macos.11.0)
set(CMAKE_CXX_COMPILER ${ZIG} c++ -target ${zig_family}-macos.11.0)
# To find out which compiler this is CMake would link a program, for which zig first makes a whole C++ runtime.
foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_ID_RUN ON)
    set(CMAKE_${language}_COMPILER_ID Clang)
    set(CMAKE_${language}_COMPILER_VERSION 16.0.6)
    set(CMAKE_${language}_COMPILER_FRONTEND_VARIANT GNU)
endforeach()
set(CMAKE_C_STANDARD_COMPUTED_DEFAULT 17)
set(CMAKE_CXX_STANDARD_COMPUTED_DEFAULT 17)
find_program(CMAKE_AR NAMES llvm-ar-14 llvm-ar REQUIRED)
find_program(CMAKE_RANLIB NAMES llvm-ranlib-14 llvm-ranlib REQUIRED)
find_program(MAC_LINKER NAMES ld64.lld-14 ld64.lld REQUIRED)
set(CCACHE OFF) # zig keeps what it has compiled itself

set(mac_sdk ${CMAKE_CURRENT_LIST_DIR}/../sdk/mac)
set(mac_include ${CMAKE_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${mac_include})
foreach(folder GL KHR)
    file(CREATE_LINK /usr/include/${folder} ${mac_include}/${folder} SYMBOLIC)
endforeach()
set(OPENGL_INCLUDE_DIR ${mac_sdk}/OpenGL.framework/Headers CACHE PATH "")
set(OPENGL_gl_LIBRARY ${mac_sdk}/OpenGL.framework CACHE PATH "")
set(CMAKE_C_FLAGS_INIT "-F ${mac_sdk}")
set(CMAKE_CXX_FLAGS_INIT "-F ${mac_sdk} -isystem ${mac_include}")

set(CMAKE_USER_MAKE_RULES_OVERRIDE_CXX ${CMAKE_CURRENT_LIST_DIR}/mac_on_linux_rules.cmake)
