/* Compiled wherever her voice is built for a Mac: on Linux with our declarations of its sound, on a Mac with
   the system's own. What one of them had otherwise would not compile there. */
#include <stddef.h>

#include <AudioToolbox/AudioToolbox.h>
#include <CoreAudio/CoreAudio.h>

#define IS(name, value) _Static_assert((unsigned)(name) == (unsigned)(value), #name)
#define LIES_AT(type, member, offset) IS(offsetof(type, member), offset)

IS(sizeof(AudioBufferList), 24);
LIES_AT(AudioBufferList, mBuffers[0].mDataByteSize, 12);
LIES_AT(AudioBufferList, mBuffers[0].mData, 16);
IS(sizeof(AudioStreamBasicDescription), 40);
LIES_AT(AudioStreamBasicDescription, mFormatFlags, 12);
LIES_AT(AudioStreamBasicDescription, mChannelsPerFrame, 28);
IS(sizeof(AudioTimeStamp), 64);
LIES_AT(AudioTimeStamp, mHostTime, 8);
LIES_AT(AudioTimeStamp, mFlags, 56);
IS(sizeof(AudioValueRange), 16);
IS(sizeof(AudioObjectPropertyAddress), 12);
IS(sizeof(AudioComponentDescription), 20);
LIES_AT(AURenderCallbackStruct, inputProcRefCon, 8);

/* Four letters each. */
IS(kAudioFormatLinearPCM, 0x6C70636D);
IS(kAudioFormatFlagsNativeFloatPacked, 9);
IS(kAudioObjectPropertyScopeGlobal, 0x676C6F62);
IS(kAudioHardwarePropertyDevices, 0x64657623);
IS(kAudioHardwarePropertyDefaultInputDevice, 0x64496E20);
IS(kAudioHardwarePropertyDefaultOutputDevice, 0x644F7574);
IS(kAudioHardwarePropertyRunLoop, 0x726E6C70);
IS(kAudioHardwareIllegalOperationError, 0x6E6F7065);
IS(kAudioHardwareUnknownPropertyError, 0x77686F3F);
IS(kAudioDevicePermissionsError, 0x21686F67);
IS(kAudioDevicePropertyDeviceName, 0x6E616D65);
IS(kAudioDevicePropertyDeviceNameCFString, 0x6C6E616D);
IS(kAudioDevicePropertyChannelName, 0x63686E6D);
IS(kAudioDevicePropertyChannelNameCFString, 0x6C63686E);
IS(kAudioDevicePropertyNominalSampleRate, 0x6E737274);
IS(kAudioDevicePropertyAvailableNominalSampleRates, 0x6E737223);
IS(kAudioDevicePropertyActualSampleRate, 0x61737274);
IS(kAudioDevicePropertyBufferFrameSize, 0x6673697A);
IS(kAudioDevicePropertyBufferFrameSizeRange, 0x66737A23);
IS(kAudioDevicePropertyStreamConfiguration, 0x736C6179);
IS(kAudioDevicePropertyStreams, 0x73746D23);
IS(kAudioDevicePropertyLatency, 0x6C746E63);
IS(kAudioStreamPropertyLatency, 0x6C746E63);
IS(kAudioDevicePropertySafetyOffset, 0x73616674);
IS(kAudioDeviceProcessorOverload, 0x6F766572);
IS(kAudioUnitType_Output, 0x61756F75);
IS(kAudioUnitSubType_HALOutput, 0x6168616C);
IS(kAudioUnitManufacturer_Apple, 0x6170706C);
IS(kAudioConverterSampleRateConverterQuality, 0x73726371);

IS(kAudioUnitScope_Output, 2);
IS(kAudioUnitProperty_StreamFormat, 8);
IS(kAudioUnitProperty_MaximumFramesPerSlice, 14);
IS(kAudioUnitProperty_SetRenderCallback, 23);
IS(kAudioUnitProperty_RenderQuality, 26);
IS(kAudioOutputUnitProperty_CurrentDevice, 2000);
IS(kAudioOutputUnitProperty_IsRunning, 2001);
IS(kAudioOutputUnitProperty_ChannelMap, 2002);
IS(kAudioOutputUnitProperty_EnableIO, 2003);
IS(kAudioOutputUnitProperty_SetInputCallback, 2005);
IS(kAudioUnitErr_TooManyFramesToProcess, -10874);
IS(kAudioUnitErr_FormatNotSupported, -10868);
IS(kAudioUnitErr_CannotDoInCurrentContext, -10863);
IS(kAudioUnitErr_Initialized, -10849);
IS(kAudioConverterQuality_Max, 0x7F);
IS(kRenderQuality_Max, 0x7F);
