# Every source file is laid out as .clang-format has it.
file(GLOB_RECURSE FILES ${SOURCE}/*.cpp ${SOURCE}/*.h ${SOURCE}/*.c)
list(FILTER FILES EXCLUDE REGEX "^${SOURCE}/(build|out)/")
execute_process(COMMAND ${CLANG_FORMAT} --dry-run -Werror ${FILES} RESULT_VARIABLE FAILED)
if(FAILED)
    message(FATAL_ERROR "clang-format -i puts these files right")
endif()
