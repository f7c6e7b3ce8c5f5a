# The page of phrases is what the systems files say.
file(GLOB aircraft LIST_DIRECTORIES true ${STAGED}/*)
execute_process(COMMAND ${SIM} phrases ${aircraft} ${STAGED}/../any OUTPUT_VARIABLE made COMMAND_ERROR_IS_FATAL ANY)
file(READ ${PAGE} page)
if(NOT made STREQUAL page)
    message(FATAL_ERROR "${PAGE} is out of date; \"./fennic phrases\" makes it again")
endif()
