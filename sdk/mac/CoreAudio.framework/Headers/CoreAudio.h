/* Of macOS's CoreAudio, what is called for sound devices. On a Mac the system's own header is taken, which a
   build there compares with what is here (tests/mac/sound_declarations.c). */
#ifndef FENNIC_SDK_COREAUDIO_H
#define FENNIC_SDK_COREAUDIO_H

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Sound ---- */

typedef struct AudioBuffer {
    UInt32 mNumberChannels;
    UInt32 mDataByteSize;
    void *mData;
} AudioBuffer;

/* As many buffers as it says. */
typedef struct AudioBufferList {
    UInt32 mNumberBuffers;
    AudioBuffer mBuffers[1];
} AudioBufferList;

typedef struct AudioStreamBasicDescription {
    Float64 mSampleRate;
    UInt32 mFormatID;
    UInt32 mFormatFlags;
    UInt32 mBytesPerPacket;
    UInt32 mFramesPerPacket;
    UInt32 mBytesPerFrame;
    UInt32 mChannelsPerFrame;
    UInt32 mBitsPerChannel;
    UInt32 mReserved;
} AudioStreamBasicDescription;

enum {
    kAudioFormatLinearPCM = 'lpcm',
    kAudioFormatFlagIsFloat = 1,
    kAudioFormatFlagIsPacked = 8,
    kAudioFormatFlagsNativeFloatPacked = kAudioFormatFlagIsFloat | kAudioFormatFlagIsPacked
};

typedef struct SMPTETime {
    SInt16 mSubframes;
    SInt16 mSubframeDivisor;
    UInt32 mCounter;
    UInt32 mType;
    UInt32 mFlags;
    SInt16 mHours;
    SInt16 mMinutes;
    SInt16 mSeconds;
    SInt16 mFrames;
} SMPTETime;

typedef struct AudioTimeStamp {
    Float64 mSampleTime;
    UInt64 mHostTime;
    Float64 mRateScalar;
    UInt64 mWordClockTime;
    SMPTETime mSMPTETime;
    UInt32 mFlags;
    UInt32 mReserved;
} AudioTimeStamp;

typedef struct AudioValueRange {
    Float64 mMinimum;
    Float64 mMaximum;
} AudioValueRange;

UInt64 AudioGetCurrentHostTime(void);
UInt64 AudioConvertHostTimeToNanos(UInt64 inHostTime);

/* ---- Devices ---- */

typedef UInt32 AudioObjectID;
typedef UInt32 AudioDeviceID;
typedef UInt32 AudioStreamID;
typedef UInt32 AudioHardwarePropertyID;
typedef UInt32 AudioDevicePropertyID;

typedef struct AudioObjectPropertyAddress {
    UInt32 mSelector;
    UInt32 mScope;
    UInt32 mElement;
} AudioObjectPropertyAddress;

enum {
    kAudioDeviceUnknown = 0,
    kAudioObjectSystemObject = 1,
    kAudioObjectPropertyScopeGlobal = 'glob',
    kAudioObjectPropertyElementMaster = 0
};

enum {
    kAudioHardwareNoError = 0,
    kAudioHardwareNotRunningError = 'stop',
    kAudioHardwareUnspecifiedError = 'what',
    kAudioHardwareUnknownPropertyError = 'who?',
    kAudioHardwareBadPropertySizeError = '!siz',
    kAudioHardwareIllegalOperationError = 'nope',
    kAudioHardwareBadDeviceError = '!dev',
    kAudioHardwareBadStreamError = '!str',
    kAudioHardwareUnsupportedOperationError = 'unop',
    kAudioDeviceUnsupportedFormatError = '!dat',
    kAudioDevicePermissionsError = '!hog'
};

enum {
    kAudioHardwarePropertyDevices = 'dev#',
    kAudioHardwarePropertyDefaultInputDevice = 'dIn ',
    kAudioHardwarePropertyDefaultOutputDevice = 'dOut',
    kAudioHardwarePropertyRunLoop = 'rnlp'
};

enum {
    kAudioDevicePropertyDeviceName = 'name',
    kAudioDevicePropertyDeviceNameCFString = 'lnam',
    kAudioDevicePropertyChannelName = 'chnm',
    kAudioDevicePropertyChannelNameCFString = 'lchn',
    kAudioDevicePropertyNominalSampleRate = 'nsrt',
    kAudioDevicePropertyAvailableNominalSampleRates = 'nsr#',
    kAudioDevicePropertyActualSampleRate = 'asrt',
    kAudioDevicePropertyBufferFrameSize = 'fsiz',
    kAudioDevicePropertyBufferFrameSizeRange = 'fsz#',
    kAudioDevicePropertyStreamConfiguration = 'slay',
    kAudioDevicePropertyStreams = 'stm#',
    kAudioDevicePropertyLatency = 'ltnc',
    kAudioDevicePropertySafetyOffset = 'saft',
    kAudioDeviceProcessorOverload = 'over',
    kAudioStreamPropertyLatency = 'ltnc'
};

typedef OSStatus (*AudioDevicePropertyListenerProc)(AudioDeviceID inDevice, UInt32 inChannel, Boolean isInput,
                                                    AudioDevicePropertyID inPropertyID, void *inClientData);

/* All return 0 or an error. */
OSStatus AudioHardwareGetPropertyInfo(AudioHardwarePropertyID inPropertyID, UInt32 *outSize,
                                      Boolean *outWritable);
OSStatus AudioHardwareGetProperty(AudioHardwarePropertyID inPropertyID, UInt32 *ioPropertyDataSize,
                                  void *outPropertyData);
OSStatus AudioDeviceGetPropertyInfo(AudioDeviceID inDevice, UInt32 inChannel, Boolean isInput,
                                    AudioDevicePropertyID inPropertyID, UInt32 *outSize,
                                    Boolean *outWritable);
OSStatus AudioDeviceGetProperty(AudioDeviceID inDevice, UInt32 inChannel, Boolean isInput,
                                AudioDevicePropertyID inPropertyID, UInt32 *ioPropertyDataSize,
                                void *outPropertyData);
OSStatus AudioDeviceSetProperty(AudioDeviceID inDevice, const AudioTimeStamp *inWhen, UInt32 inChannel,
                                Boolean isInput, AudioDevicePropertyID inPropertyID,
                                UInt32 inPropertyDataSize, const void *inPropertyData);
OSStatus AudioDeviceAddPropertyListener(AudioDeviceID inDevice, UInt32 inChannel, Boolean isInput,
                                        AudioDevicePropertyID inPropertyID,
                                        AudioDevicePropertyListenerProc inProc, void *inClientData);
OSStatus AudioDeviceRemovePropertyListener(AudioDeviceID inDevice, UInt32 inChannel, Boolean isInput,
                                           AudioDevicePropertyID inPropertyID,
                                           AudioDevicePropertyListenerProc inProc);
OSStatus AudioStreamGetProperty(AudioStreamID inStream, UInt32 inChannel, AudioDevicePropertyID inPropertyID,
                                UInt32 *ioPropertyDataSize, void *outPropertyData);
OSStatus AudioObjectSetPropertyData(AudioObjectID inObjectID, const AudioObjectPropertyAddress *inAddress,
                                    UInt32 inQualifierDataSize, const void *inQualifierData,
                                    UInt32 inDataSize, const void *inData);

#ifdef __cplusplus
}
#endif

#endif
