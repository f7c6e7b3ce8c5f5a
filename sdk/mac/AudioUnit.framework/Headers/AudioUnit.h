/* macOS has moved what is in this framework to another. */
#include <AudioToolbox/AudioToolbox.h>
