# How ld64.lld makes a plug-in, and a program; read by CMake behind its own rules for Darwin.
set(CMAKE_CXX_LINKER_WRAPPER_FLAG "")
get_filename_component(mac_system ${ZIG} DIRECTORY)
string(APPEND mac_system /lib/libc/darwin/libSystem.11.tbd)
set(link "-arch ${MAC_FAMILY} -platform_version macos 11.0 13.0 -dead_strip -S -adhoc_codesign <LINK_FLAGS> -F ${CMAKE_CURRENT_LIST_DIR}/../sdk/mac -o <TARGET> <OBJECTS> <LINK_LIBRARIES> ${mac_system}")
set(CMAKE_CXX_CREATE_SHARED_MODULE "${MAC_LINKER} -dylib -install_name mac.xpl ${link}")
set(CMAKE_CXX_LINK_EXECUTABLE "${MAC_LINKER} ${link}")
# zig does not know the language "header".
set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER>)
