/* The sizes of whole numbers, as the headers of speexdsp ask for them. */
#pragma once

#include <stdint.h>

typedef int16_t spx_int16_t;
typedef uint16_t spx_uint16_t;
typedef int32_t spx_int32_t;
typedef uint32_t spx_uint32_t;
