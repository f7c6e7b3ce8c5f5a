/* Sounds that a plug-in has as samples of 16 bits, played by the simulator's sound engine. */
#ifndef FENNIC_SDK_XPLMSOUND_H
#define FENNIC_SDK_XPLMSOUND_H

#include "XPLMDefs.h"
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Of the sound engine's own declarations what the calls below take. */
#ifndef _FMOD_COMMON_H
typedef struct FMOD_CHANNEL FMOD_CHANNEL;
typedef int FMOD_RESULT;
enum {
    FMOD_OK = 0,
    FMOD_ERR_INVALID_HANDLE = 30,
};
typedef int FMOD_SOUND_FORMAT;
enum {
    FMOD_SOUND_FORMAT_PCM16 = 2,
};
typedef struct FMOD_VECTOR {
    float x, y, z;
} FMOD_VECTOR;
#endif

enum {
    xplm_AudioRadioCom1 = 0,
    xplm_AudioRadioCom2 = 1,
    xplm_AudioRadioPilot = 2,
    xplm_AudioRadioCopilot = 3,
    xplm_AudioExteriorAircraft = 4,
    xplm_AudioExteriorEnvironment = 5,
    xplm_AudioExteriorUnprocessed = 6,
    xplm_AudioInterior = 7,
    xplm_AudioUI = 8,
    xplm_AudioGround = 9,
    xplm_Master = 10,
};
typedef int XPLMAudioBus;
enum {
    xplm_MasterBank = 0,
    xplm_RadioBank = 1,
};
typedef int XPLMBankID;
typedef void (*XPLMPCMComplete_f)(void *inRefcon, FMOD_RESULT status);

XPLM_API FMOD_CHANNEL *XPLMPlayPCMOnBus(void *audioBuffer, uint32_t bufferSize, FMOD_SOUND_FORMAT soundFormat,
                                        int freqHz, int numChannels, int loop, XPLMAudioBus audioType,
                                        XPLMPCMComplete_f inCallback, void *inRefcon);
XPLM_API FMOD_RESULT XPLMStopAudio(FMOD_CHANNEL *fmod_channel);
XPLM_API FMOD_RESULT XPLMSetAudioPosition(FMOD_CHANNEL *fmod_channel, FMOD_VECTOR *position,
                                          FMOD_VECTOR *velocity);
XPLM_API FMOD_RESULT XPLMSetAudioFadeDistance(FMOD_CHANNEL *fmod_channel, float min_fade_distance,
                                              float max_fade_distance);
XPLM_API FMOD_RESULT XPLMSetAudioVolume(FMOD_CHANNEL *fmod_channel, float source_volume);
XPLM_API FMOD_RESULT XPLMSetAudioPitch(FMOD_CHANNEL *fmod_channel, float audio_pitch_hz);
XPLM_API FMOD_RESULT XPLMSetAudioCone(FMOD_CHANNEL *fmod_channel, float inside_angle, float outside_angle,
                                      float outside_volume, FMOD_VECTOR *orientation);

#ifdef __cplusplus
}
#endif

#endif
