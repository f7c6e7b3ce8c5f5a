/* What sphinxbase and pocketsphinx want to know of the system, for all three. */
#pragma once

#include "sphinx_config.h"

#define HAVE_STDINT_H 1
#define HAVE_STDLIB_H 1
#define HAVE_STRING_H 1
#define HAVE_SYS_STAT_H 1
#define HAVE_SYS_TYPES_H 1
#define HAVE_SNPRINTF 1
#define HAVE_PERROR 1
#ifndef _WIN32
#define HAVE_UNISTD_H 1
#define HAVE_POPEN 1
#define HAVE_PTHREAD_H 1
#endif
