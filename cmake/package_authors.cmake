# Makes the zip file for authors: the program fennic-sim with what it looks for beside it, the pages, and systems
# files and flights to look at.
#   cmake -DSOURCE=<checkout> -DBUILT=<folder with fennic-sim and the staged aircraft> -DOUT=<folder>
#         [-DLIBRARIES=<more .xpl>] -P package_authors.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/package_zip.cmake)

file(STRINGS ${SOURCE}/VERSION VERSION LIMIT_COUNT 1)
set(root ${OUT}/unpacked_authors)
set(authors ${root}/fennic-authors)
file(REMOVE_RECURSE ${root})
file(MAKE_DIRECTORY ${authors}/aircraft ${authors}/flights ${authors}/licences)
file(COPY ${BUILT}/fennic-sim ${BUILT}/without_opengl DESTINATION ${authors})
file(COPY ${BUILT}/aircraft/Cessna_172SP ${SOURCE}/aircraft/shared DESTINATION ${authors}/aircraft)
set(plugin ${authors}/aircraft/Cessna_172SP/plugins/fennic/64)
file(GLOB_RECURSE states ${plugin}/Log.txt ${plugin}/_save.txt ${plugin}/context.txt)
if(states)
    message(FATAL_ERROR "somebody has flown with this folder: ${states}")
endif()
if(LIBRARIES)
    file(COPY ${LIBRARIES} DESTINATION ${plugin})
endif()
file(COPY ${SOURCE}/flights/cessna_172.lua ${SOURCE}/flights/checklist.lua ${SOURCE}/flights/lib
     DESTINATION ${authors}/flights)

# The pages say what is typed in the sources; here it is the program itself.
file(COPY ${SOURCE}/docs ${SOURCE}/README.md ${SOURCE}/CHANGELOG.md ${SOURCE}/LICENSE DESTINATION ${authors})
file(GLOB pages ${authors}/docs/*.md)
foreach(page IN LISTS pages)
    if(NOT page MATCHES "/developers.md$")
        file(READ ${page} text)
        string(REPLACE "./fennic sim" "./fennic-sim" text "${text}")
        file(WRITE ${page} "${text}")
    endif()
endforeach()

configure_file(${SOURCE}/cmake/package_authors_readme.txt.in ${authors}/readme.txt @ONLY)
file(COPY_FILE ${SOURCE}/VERSION ${authors}/version.txt)
file(COPY_FILE ${SOURCE}/LICENSE ${authors}/licences/fennic.txt)
file(COPY ${SOURCE}/cmake/licences/ ${SOURCE}/cmake/licences_authors/ DESTINATION ${authors}/licences)
make_package(${OUT}/Fennic-authors-${VERSION}-linux.zip ${root} fennic-authors EXECUTABLES fennic-authors/fennic-sim)
