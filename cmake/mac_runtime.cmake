# The C++ runtime that a library for macOS holds when it is made on Linux: of the sources that zig brings, those that
# are wanted, as it compiles them itself. zig would make all of it, for minutes. What is wanted beyond these the test
# of the libraries names.
get_filename_component(runtime_sources ${ZIG} DIRECTORY)
string(APPEND runtime_sources /lib)

set(parts algorithm chrono condition_variable condition_variable_destructor exception future hash ios ios.instantiations
    locale memory mutex mutex_destructor new stdexcept string system_error thread variant)
list(TRANSFORM parts REPLACE "(.+)" "${runtime_sources}/libcxx/src/\\1.cpp")
set(abi_parts abort_message cxa_default_handlers cxa_demangle cxa_exception cxa_exception_storage cxa_guard cxa_handlers
    cxa_personality cxa_virtual fallback_malloc private_typeinfo stdlib_exception stdlib_new_delete stdlib_stdexcept
    stdlib_typeinfo)
list(TRANSFORM abi_parts REPLACE "(.+)" "${runtime_sources}/libcxxabi/src/\\1.cpp")

add_library(mac_runtime STATIC ${parts} ${abi_parts})
target_include_directories(mac_runtime SYSTEM PRIVATE ${runtime_sources}/libcxxabi/include ${runtime_sources}/libcxx/src)
target_compile_definitions(mac_runtime PRIVATE _LIBCXXABI_BUILDING_LIBRARY _LIBCXXABI_DISABLE_VISIBILITY_ANNOTATIONS)
target_compile_options(mac_runtime PRIVATE -w -ffile-prefix-map=${runtime_sources}=.)
set_source_files_properties(
    ${parts} PROPERTIES COMPILE_DEFINITIONS
    "_LIBCPP_BUILDING_LIBRARY;_LIBCPP_HAS_NO_PRAGMA_SYSTEM_HEADER;LIBCXX_BUILDING_LIBCXXABI;_LIBCPP_DISABLE_NEW_DELETE_DEFINITIONS")
set_source_files_properties(
    ${abi_parts} PROPERTIES COMPILE_DEFINITIONS
    "_LIBCPP_DISABLE_EXTERN_TEMPLATE;_LIBCPP_ENABLE_CXX17_REMOVED_UNEXPECTED_FUNCTIONS")
