/* Included with gl.h. */
#include <GL/glext.h>
