# Toolchain: the plug-in for macOS 11, made on Linux for one family of processors. zig compiles, since it brings
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
set(CMAKE_CXX_FLAGS_INIT "-F ${mac_sdk} -isystem ${mac_include}")

# zig makes the static C++ library when it links for the first time, and says with which files it does.
if(NOT DEFINED MAC_RUNTIME)
    file(WRITE ${CMAKE_BINARY_DIR}/empty.cpp "#include <iostream>\nint main() { std::cout << 1; }\n")
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E env ZIG_VERBOSE_LINK=1 ${CMAKE_CXX_COMPILER} ${CMAKE_BINARY_DIR}/empty.cpp
                -o ${CMAKE_BINARY_DIR}/empty
        ERROR_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCH "zig ld [^\n]*" told "${told}")
    string(REGEX MATCHALL "[^ ]+/lib(c\\+\\+|c\\+\\+abi|compiler_rt)\\.a" MAC_RUNTIME "${told}")
    get_filename_component(zig_folder ${ZIG} DIRECTORY)
    list(APPEND MAC_RUNTIME ${zig_folder}/lib/libc/darwin/libSystem.11.tbd)
    list(JOIN MAC_RUNTIME " " MAC_RUNTIME)
    set(MAC_RUNTIME "${MAC_RUNTIME}" CACHE INTERNAL "")
endif()
set(CMAKE_USER_MAKE_RULES_OVERRIDE_CXX ${CMAKE_CURRENT_LIST_DIR}/mac_on_linux_rules.cmake)
