# How ld64.lld makes a plug-in; read by CMake behind its own rules for Darwin.
set(CMAKE_CXX_LINKER_WRAPPER_FLAG "")
set(CMAKE_CXX_CREATE_SHARED_MODULE
    "${MAC_LINKER} -dylib -install_name mac.xpl -arch ${MAC_FAMILY} -platform_version macos 11.0 13.0 -dead_strip -S -adhoc_codesign <LINK_FLAGS> -F ${CMAKE_CURRENT_LIST_DIR}/../sdk/mac -o <TARGET> <OBJECTS> <LINK_LIBRARIES> ${MAC_RUNTIME}"
)
