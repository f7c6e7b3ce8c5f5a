# The C++ runtime that a library for macOS holds when it is made on Linux: of the sources that zig brings, those that
# are wanted, as it compiles them itself. zig would make all of it, for minutes. What is wanted beyond these the test
# of the libraries names.
get_filename_component(runtime_sources ${ZIG} DIRECTORY)
string(APPEND runtime_sources /lib)

set(parts algorithm chrono condition_variable exception future hash ios ios.instantiations mutex new stdexcept string
    thread variant)
set(parts_alone condition_variable_destructor filesystem/directory_iterator filesystem/int128_builtins
    filesystem/operations locale memory mutex_destructor system_error) # they repeat names of others
set(abi_parts abort_message cxa_default_handlers cxa_demangle cxa_exception cxa_exception_storage cxa_guard cxa_handlers
    cxa_personality cxa_virtual fallback_malloc private_typeinfo stdlib_exception stdlib_new_delete stdlib_stdexcept
    stdlib_typeinfo)
list(TRANSFORM parts REPLACE "(.+)" "${runtime_sources}/libcxx/src/\\1.cpp")
list(TRANSFORM parts_alone REPLACE "(.+)" "${runtime_sources}/libcxx/src/\\1.cpp")
list(TRANSFORM abi_parts REPLACE "(.+)" "${runtime_sources}/libcxxabi/src/\\1.cpp")

add_library(mac_runtime STATIC ${parts} ${parts_alone})
target_compile_definitions(mac_runtime PRIVATE _LIBCPP_BUILDING_LIBRARY _LIBCPP_HAS_NO_PRAGMA_SYSTEM_HEADER
                           LIBCXX_BUILDING_LIBCXXABI _LIBCPP_DISABLE_NEW_DELETE_DEFINITIONS)
set_source_files_properties(${parts_alone} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
add_library(mac_runtime_abi STATIC ${abi_parts})
target_compile_definitions(mac_runtime_abi PRIVATE _LIBCPP_DISABLE_EXTERN_TEMPLATE _LIBCXXABI_BUILDING_LIBRARY
                           _LIBCPP_ENABLE_CXX17_REMOVED_UNEXPECTED_FUNCTIONS)
target_link_libraries(mac_runtime PUBLIC mac_runtime_abi)
foreach(target mac_runtime mac_runtime_abi)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0) # most of it is one set of headers
    target_include_directories(${target} SYSTEM PRIVATE ${runtime_sources}/libcxxabi/include ${runtime_sources}/libcxx/src)
    target_compile_definitions(${target} PRIVATE _LIBCXXABI_DISABLE_VISIBILITY_ANNOTATIONS)
    target_compile_options(${target} PRIVATE -w -ffile-prefix-map=${runtime_sources}=.)
endforeach()
