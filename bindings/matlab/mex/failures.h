/* Makes errors of MATLAB of the failures that the library stores. The functions named Fail and Require do not return
 * when there is a failure. */
#ifndef VELOXD_MATLAB_FAILURES_H
#define VELOXD_MATLAB_FAILURES_H

#include <stdbool.h>
#include <stdint.h>

enum
{
    usualTextSize = 256
}; /* bytes of a buffer that is large enough for most texts */

/* Forgets a failure of a call that somebody else has made. */
void ForgetFailure(void);

/* The size that a getter asked for because its buffer was too small; 0 if that was not so. Forgets that failure. */
uint64_t NeededSize(void);

/* An error "veloxd:failed", or "veloxd:memory", if the last calls have failed. */
void FailIfAsked(void);

/* The same for a result of VELOxdBlocks. */
void RequireBlock(int32_t result);

/* An error "veloxd:file" where the system refuses the file, else "veloxd:damaged". */
void FailToOpen(const char* path, bool hasNoHeader);

/* An error "veloxd:file" where the system refuses the file, if saving has failed. */
void FailToSaveIfAsked(const char* path);

#endif
