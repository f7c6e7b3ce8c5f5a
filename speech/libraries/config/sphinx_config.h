/* The sizes of the system's integers, as the headers of sphinxbase ask for them. */
#pragma once

#define SIZEOF_LONG __SIZEOF_LONG__
#define HAVE_LONG_LONG 1
#define SIZEOF_LONG_LONG __SIZEOF_LONG_LONG__
