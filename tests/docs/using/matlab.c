/* Compiles the header of the MATLAB page. Flags must have a type that MATLAB knows. */
#include "VELOxdMatlab.h"

unsigned char (*const hasLastError)(void) = VELHasLastError;
