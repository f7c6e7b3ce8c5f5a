# Makes the zip file of the staged speech side: the folder fennic_speech, to be unzipped in the simulator's
# Resources/plugins/. Of a Mac it may be the plug-in alone, without the program.
#   cmake -DSOURCE=<checkout> -DSTAGED=<staged fennic_speech> -DENGINES=<sources of the engines> -DOUT=<folder>
#         -P package_speech.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/package_zip.cmake)

file(STRINGS ${SOURCE}/VERSION VERSION LIMIT_COUNT 1)
set(root ${OUT}/unpacked_speech)
set(SUM sha256sum)
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
    set(SYSTEM "macOS")
    set(system macos)
    set(RUNS_ON "macOS 11 and later, on Apple's and Intel's processors")
    set(program 64/fennic-voice.app/Contents/MacOS/fennic-voice)
    set(FIRST_START "
     The program is not notarised, so the system may refuse to start it; in a terminal, in this folder,
     xattr -dr com.apple.quarantine .  allows it. At the first start the system asks whether \"Fennic voice\" may use
     the microphone.")
    set(SUM "shasum -a 256")
elseif(EXISTS ${speech}/64/win.xpl)
    set(SYSTEM "Windows")
    set(system windows)
    set(RUNS_ON "Windows 10 and later")
    set(program 64/fennic-voice.exe)
    set(FIRST_START "

  Right-click the zip file before, choose \"Properties\" and tick \"Unblock\"; then open it and drag the folder
  fennic_speech into plugins: \"Extract All\" makes one folder too many. Where she does not hear you, switch on
  \"Let desktop apps access your microphone\" in the settings of Windows, under \"Privacy\", \"Microphone\".")
else()
    set(SYSTEM "Linux")
    set(system linux)
    set(RUNS_ON "a Linux with glibc 2.31 or newer (Ubuntu 20.04, Debian 11, Fedora 32, RHEL 9 and later ones)")
    set(program 64/fennic-voice)
endif()
file(COPY_FILE ${SOURCE}/VERSION ${speech}/version.txt)
file(COPY_FILE ${SOURCE}/LICENSE ${speech}/licences/fennic.txt)
set(zip_file ${OUT}/Fennic-speech-${VERSION}-${system}.zip)
if(system STREQUAL "macos" AND NOT EXISTS ${speech}/${program}) # made elsewhere
    configure_file(${SOURCE}/cmake/package_companion_readme.txt.in ${speech}/readme.txt @ONLY)
    make_package(${zip_file} ${root} fennic_speech)
    return()
endif()
if(system STREQUAL "windows")
    string(REPLACE "/" "\\" PROGRAM ${program})
else()
    set(PROGRAM ${program})
endif()
configure_file(${SOURCE}/cmake/package_speech_readme.txt.in ${speech}/readme.txt @ONLY)
file(COPY_FILE ${ENGINES}/pocketsphinx/LICENSE ${speech}/licences/pocketsphinx.txt)
file(COPY_FILE ${ENGINES}/sphinxbase/LICENSE ${speech}/licences/sphinxbase.txt)
file(COPY_FILE ${ENGINES}/pocketsphinx/model/en-us/en-us/README ${speech}/licences/model.txt)
file(COPY_FILE ${ENGINES}/speexdsp/COPYING ${speech}/licences/speexdsp.txt)
file(COPY_FILE ${ENGINES}/flite/COPYING ${speech}/licences/flite_and_its_voices.txt)
file(COPY_FILE ${ENGINES}/flite/ACKNOWLEDGEMENTS ${speech}/licences/flite_acknowledgements.txt)
file(COPY_FILE ${ENGINES}/portaudio/LICENSE.txt ${speech}/licences/portaudio.txt)
make_package(${zip_file} ${root} fennic_speech EXECUTABLES fennic_speech/${program})
