# Compiles the German locale into LOCALES, once.
cmake_minimum_required(VERSION 3.25)
if(NOT EXISTS ${LOCALES}/de_DE.UTF-8)
    file(MAKE_DIRECTORY ${LOCALES})
    execute_process(COMMAND ${LOCALEDEF} -i de_DE -f UTF-8 ${LOCALES}/de_DE.UTF-8 COMMAND_ERROR_IS_FATAL ANY)
endif()
