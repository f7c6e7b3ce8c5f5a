/* What every header of the interface shares: identifiers, keys, export macros. */
#ifndef FENNIC_SDK_XPLMDEFS_H
#define FENNIC_SDK_XPLMDEFS_H

#if APL
#define PLUGIN_API_VISIBILITY __attribute__((visibility("default")))
#elif IBM
#define PLUGIN_API_VISIBILITY __declspec(dllexport)
#elif LIN
#define PLUGIN_API_VISIBILITY __attribute__((visibility("default")))
#else
#error "Define exactly one of APL, IBM and LIN as 1."
#endif

/* PLUGIN_API marks the five entry points; XPLM_API what the simulator offers. */
#ifdef __cplusplus
#define PLUGIN_API extern "C" PLUGIN_API_VISIBILITY
#else
#define PLUGIN_API PLUGIN_API_VISIBILITY
#endif
#define XPLM_API PLUGIN_API_VISIBILITY

#ifdef __cplusplus
extern "C" {
#endif

#define kXPLM_Version 400

typedef int XPLMPluginID;
#define XPLM_NO_PLUGIN_ID (-1)
#define XPLM_PLUGIN_XPLANE (0)

typedef int XPLMKeyFlags;
enum {
    xplm_ShiftFlag = 1,
    xplm_OptionAltFlag = 2,
    xplm_ControlFlag = 4,
    xplm_DownFlag = 8,
    xplm_UpFlag = 16,
};

/* Characters that are no printable ASCII; all others are their ASCII codes. */
#define XPLM_KEY_RETURN 13
#define XPLM_KEY_ESCAPE 27
#define XPLM_KEY_TAB 9
#define XPLM_KEY_DELETE 8
#define XPLM_KEY_LEFT 28
#define XPLM_KEY_RIGHT 29
#define XPLM_KEY_UP 30
#define XPLM_KEY_DOWN 31

/* Virtual keys: the key itself, whatever the layout makes of it. */
#define XPLM_VK_BACK 0x08
#define XPLM_VK_TAB 0x09
#define XPLM_VK_RETURN 0x0D
#define XPLM_VK_ESCAPE 0x1B
#define XPLM_VK_SPACE 0x20
#define XPLM_VK_END 0x23
#define XPLM_VK_HOME 0x24
#define XPLM_VK_LEFT 0x25
#define XPLM_VK_UP 0x26
#define XPLM_VK_RIGHT 0x27
#define XPLM_VK_DOWN 0x28
#define XPLM_VK_DELETE 0x2E
#define XPLM_VK_0 0x30
#define XPLM_VK_1 0x31
#define XPLM_VK_2 0x32
#define XPLM_VK_3 0x33
#define XPLM_VK_4 0x34
#define XPLM_VK_5 0x35
#define XPLM_VK_6 0x36
#define XPLM_VK_7 0x37
#define XPLM_VK_8 0x38
#define XPLM_VK_9 0x39
#define XPLM_VK_A 0x41
#define XPLM_VK_B 0x42
#define XPLM_VK_C 0x43
#define XPLM_VK_D 0x44
#define XPLM_VK_E 0x45
#define XPLM_VK_F 0x46
#define XPLM_VK_G 0x47
#define XPLM_VK_H 0x48
#define XPLM_VK_I 0x49
#define XPLM_VK_J 0x4A
#define XPLM_VK_K 0x4B
#define XPLM_VK_L 0x4C
#define XPLM_VK_M 0x4D
#define XPLM_VK_N 0x4E
#define XPLM_VK_O 0x4F
#define XPLM_VK_P 0x50
#define XPLM_VK_Q 0x51
#define XPLM_VK_R 0x52
#define XPLM_VK_S 0x53
#define XPLM_VK_T 0x54
#define XPLM_VK_U 0x55
#define XPLM_VK_V 0x56
#define XPLM_VK_W 0x57
#define XPLM_VK_X 0x58
#define XPLM_VK_Y 0x59
#define XPLM_VK_Z 0x5A
#define XPLM_VK_F1 0x70
#define XPLM_VK_F2 0x71
#define XPLM_VK_F3 0x72
#define XPLM_VK_F4 0x73
#define XPLM_VK_F5 0x74
#define XPLM_VK_F6 0x75
#define XPLM_VK_F7 0x76
#define XPLM_VK_F8 0x77
#define XPLM_VK_F9 0x78
#define XPLM_VK_F10 0x79
#define XPLM_VK_F11 0x7A
#define XPLM_VK_F12 0x7B

#ifdef __cplusplus
}
#endif

#endif
