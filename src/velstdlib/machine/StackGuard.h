// Leaves out what tells a function that its stack frame was overwritten.
#pragma once

// For functions that are called once for each sample and hold no array that could be written beyond its end: the guard
// takes a tenth of their time, and where samples are written in no order, which waits for memory, more than a third.
#ifdef __GNUC__
#define VELOXD_NO_STACK_GUARD __attribute__((no_stack_protector))
#else
#define VELOXD_NO_STACK_GUARD
#endif
