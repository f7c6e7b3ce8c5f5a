/* What PortAudio asks of macOS under the names of 2016. */
#pragma once

#include <AudioToolbox/AudioToolbox.h>
#include <AudioUnit/AudioUnit.h>
#include <CoreAudio/CoreAudio.h>
#include <CoreServices/CoreServices.h>

/* The Component Manager's calls are AudioToolbox's now. */
#define Component AudioComponent
#define ComponentDescription AudioComponentDescription
#define ComponentResult OSStatus
#define FindNextComponent AudioComponentFindNext
#define OpenAComponent AudioComponentInstanceNew
#define CloseComponent AudioComponentInstanceDispose

/* From 10.6 on it asks for a thread that tells of devices, since a program like this has no run loop that
   would; 11 is no such version to it. */
#define Gestalt(selector, answer) ((void)(*(answer) = (selector) == gestaltSystemVersionMajor ? 10 : 15))
