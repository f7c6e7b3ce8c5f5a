/* What PortAudio includes with Microsoft's compiler alone: MinGW-w64 has it, too. */
#pragma once

#include <windows.h>

#include <mmreg.h>

#include <avrt.h>
#define COBJMACROS
#include <audioclient.h>
#include <endpointvolume.h>
#define INITGUID
#include <mmdeviceapi.h>

#include <devicetopology.h>
#include <functiondiscoverykeys_devpkey.h>
#undef INITGUID
