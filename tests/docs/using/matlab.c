/* Reads the MATLAB page's header as a compiler does. Flags are a type that MATLAB knows. */
#include "VELOxdMatlab.h"

unsigned char (*const hasLastError)(void) = VELHasLastError;
