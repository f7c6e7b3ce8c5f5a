# Makes the zip file of the staged speech side: the folder fennic_speech, to be unzipped in the simulator's
# Resources/plugins/.
#   cmake -DSOURCE=<checkout> -DSTAGED=<staged fennic_speech> -DENGINES=<sources of the engines> -DOUT=<folder>
#         -P package_speech.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/package_zip.cmake)

file(STRINGS ${SOURCE}/VERSION VERSION LIMIT_COUNT 1)
set(root ${OUT}/unpacked_speech)
set(speech ${root}/fennic_speech)
file(REMOVE_RECURSE ${root})
file(MAKE_DIRECTORY ${root} ${speech}/licences)
file(COPY ${STAGED} DESTINATION ${root})
foreach(users user_settings.txt user_pronunciations.txt)
    if(EXISTS ${speech}/${users})
        message(FATAL_ERROR "somebody has used this folder: ${users}")
    endif()
endforeach()

if(EXISTS ${speech}/64/mac.xpl)
    set(SYSTEM macOS)
    set(system macos)
else()
    set(SYSTEM Linux)
    set(system linux)
endif()
configure_file(${SOURCE}/cmake/package_speech_readme.txt.in ${speech}/readme.txt @ONLY)
file(COPY_FILE ${SOURCE}/VERSION ${speech}/version.txt)
file(COPY_FILE ${SOURCE}/LICENSE ${speech}/licences/fennic.txt)
file(COPY_FILE ${ENGINES}/pocketsphinx/LICENSE ${speech}/licences/pocketsphinx.txt)
file(COPY_FILE ${ENGINES}/sphinxbase/LICENSE ${speech}/licences/sphinxbase.txt)
file(COPY_FILE ${ENGINES}/pocketsphinx/model/en-us/en-us/README ${speech}/licences/model.txt)
file(COPY_FILE ${ENGINES}/speexdsp/COPYING ${speech}/licences/speexdsp.txt)
file(COPY_FILE ${ENGINES}/flite/COPYING ${speech}/licences/flite_and_its_voices.txt)
file(COPY_FILE ${ENGINES}/flite/ACKNOWLEDGEMENTS ${speech}/licences/flite_acknowledgements.txt)
file(COPY_FILE ${ENGINES}/portaudio/LICENSE.txt ${speech}/licences/portaudio.txt)
make_package(${OUT}/Fennic-speech-${VERSION}-${system}.zip ${root} fennic_speech
             EXECUTABLES fennic_speech/64/fennic-voice)
