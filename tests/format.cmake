# Every source file is laid out as .clang-format has it. What was built is not looked into: other systems' headers
# lie there by the thousand.
file(GLOB FOLDERS LIST_DIRECTORIES true ${SOURCE}/*)
list(FILTER FOLDERS EXCLUDE REGEX "^${SOURCE}/(build|out)$")
list(TRANSFORM FOLDERS APPEND "/*.cpp" OUTPUT_VARIABLE CPP)
list(TRANSFORM FOLDERS APPEND "/*.h" OUTPUT_VARIABLE H)
list(TRANSFORM FOLDERS APPEND "/*.c" OUTPUT_VARIABLE C)
file(GLOB_RECURSE FILES ${CPP} ${H} ${C})
execute_process(COMMAND ${CLANG_FORMAT} --dry-run -Werror ${FILES} RESULT_VARIABLE FAILED)
if(FAILED)
    message(FATAL_ERROR "clang-format -i puts these files right")
endif()
