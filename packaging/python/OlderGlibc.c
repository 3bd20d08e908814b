/*
 * Functions that the linked-in archives take from glibc 2.35 and 2.36, where these are built with it: self-contained
 * binaries bring them along, and run with glibc 2.34. Thread-safe, as those of glibc are. They are hidden: the old
 * hypot would otherwise be looked for, and found, in the program itself.
 */
#include <errno.h>
#include <math.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/random.h>

#if defined(__GLIBC__) && defined(__x86_64__)

#define HIDDEN __attribute__((visibility("hidden")))

/* Cannot fail, so that a kernel without random numbers ends the process, as it does with glibc. */
HIDDEN void arc4random_buf(void* buffer, size_t size)
{
    char* missing = buffer;
    while (size > 0) {
        const ssize_t got = getrandom(missing, size, 0);
        if (got < 0 && errno != EINTR)
            abort();
        if (got > 0) {
            missing += got;
            size -= (size_t)got;
        }
    }
}

HIDDEN uint32_t arc4random(void)
{
    uint32_t number = 0;
    arc4random_buf(&number, sizeof number);
    return number;
}

/* The newer one differs in that it does not set errno. */
double hypot_of_old(double x, double y);
__asm__(".symver hypot_of_old, hypot@GLIBC_2.2.5");

HIDDEN double hypot(double x, double y)
{
    return hypot_of_old(x, y);
}

#endif
