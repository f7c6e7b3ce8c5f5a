/* OpenGL state, textures, world coordinates, the simulator's own texts. */
#ifndef FENNIC_SDK_XPLMGRAPHICS_H
#define FENNIC_SDK_XPLMGRAPHICS_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef int XPLMTextureID;
typedef int XPLMFontID;

/* Fonts. */
enum {
    xplmFont_Basic = 0,
    xplmFont_Proportional = 18,
};

XPLM_API void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                                   int inEnableAlphaTesting, int inEnableAlphaBlending,
                                   int inEnableDepthTesting, int inEnableDepthWriting);
XPLM_API void XPLMBindTexture2d(int inTextureNum, int inTextureUnit);
XPLM_API void XPLMGenerateTextureNumbers(int *outTextureIDs, int inCount);
XPLM_API int XPLMGetTexture(XPLMTextureID inTexture);
XPLM_API void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double *outX,
                               double *outY, double *outZ);
XPLM_API void XPLMLocalToWorld(double inX, double inY, double inZ, double *outLatitude, double *outLongitude,
                               double *outAltitude);
XPLM_API void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom);
XPLM_API void XPLMDrawString(float *inColorRGB, int inXOffset, int inYOffset, char *inChar,
                             int *inWordWrapWidth, XPLMFontID inFontID);
XPLM_API void XPLMDrawNumber(float *inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                             int inDecimals, int inShowSign, XPLMFontID inFontID);
XPLM_API void XPLMGetFontDimensions(XPLMFontID inFontID, int *outCharWidth, int *outCharHeight,
                                    int *outDigitsOnly);
XPLM_API float XPLMMeasureString(XPLMFontID inFontID, const char *inChar, int inNumChars);

#ifdef __cplusplus
}
#endif

#endif
