// The simulator's sound engine: there is none, so nothing plays and there is no channel to change.
#include "XPLMSound.h"

#include "simhost/modules.h"

FMOD_CHANNEL *XPLMPlayPCMOnBus(void *, uint32_t, FMOD_SOUND_FORMAT, int, int, int, XPLMAudioBus,
                               XPLMPCMComplete_f, void *) {
    simhost::ReportNotOffered(__func__);
    return nullptr;
}

FMOD_RESULT XPLMStopAudio(FMOD_CHANNEL *) {
    return FMOD_ERR_INVALID_HANDLE;
}

FMOD_RESULT XPLMSetAudioPosition(FMOD_CHANNEL *, FMOD_VECTOR *, FMOD_VECTOR *) {
    return FMOD_ERR_INVALID_HANDLE;
}

FMOD_RESULT XPLMSetAudioFadeDistance(FMOD_CHANNEL *, float, float) {
    return FMOD_ERR_INVALID_HANDLE;
}

FMOD_RESULT XPLMSetAudioVolume(FMOD_CHANNEL *, float) {
    return FMOD_ERR_INVALID_HANDLE;
}

FMOD_RESULT XPLMSetAudioPitch(FMOD_CHANNEL *, float) {
    return FMOD_ERR_INVALID_HANDLE;
}

FMOD_RESULT XPLMSetAudioCone(FMOD_CHANNEL *, float, float, float, FMOD_VECTOR *) {
    return FMOD_ERR_INVALID_HANDLE;
}
