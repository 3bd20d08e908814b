/* clang-format off */
/*
 * VELOxdBlocks: many lines, or many names, of an open file in one call.
 *
 * The library VELOxdDll reads and writes one line a call. Where a call costs more than a line, as it does from Python,
 * these functions make the calls instead. They are on top of VELOxdDll.h, to which they add nothing: what they do, a
 * program can do itself. This header is the whole interface of the library VELOxdBlocks, which is C99 and C++.
 *
 * CONVENTIONS, which hold for every function below, beside those of VELOxdDll.h
 *
 *  1. Return values. Every function returns one of VELBlockResult. With VEL_BLOCK_FAILED, VELGetLastError has the text of
 *     the call that failed, which was the last one that was made. The error flag of VELOxdDll is down after every call,
 *     and an error that was stored before is forgotten.
 *
 *  2. Blocks. A block has `count` rows, for the lines that the array `lines` names, in any order and also repeatedly. If
 *     `lines` is NULL, they are `first`, `first` + 1 and so on; otherwise `first` is not used. Row i begins at
 *     rows + i * pitch and has GetChannelData_Points elements. `pitch`, the number of elements from one row to the next,
 *     may be negative, which makes rows go backwards in memory. Rows must not overlap: otherwise, and if an array that is
 *     needed is NULL, the call returns VEL_BLOCK_BAD_CALL and does nothing.
 *
 *  3. Failures. Rows are filled or stored one after the other. The first failure ends the call; rows before that one are
 *     done, those behind it are as they were.
 *
 *  4. Threads. One call at a time, to either library: whether a call has failed is told by the last error of VELOxdDll,
 *     which is one for the process.
 */
#ifndef VELOXD_BLOCKS_H
#define VELOXD_BLOCKS_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32) && defined(VELOXD_BLOCKS_BUILDING)
#define VELOXD_BLOCKS_API __declspec(dllexport)
#elif defined(_WIN32)
#define VELOXD_BLOCKS_API __declspec(dllimport)
#elif defined(VELOXD_BLOCKS_BUILDING)
#define VELOXD_BLOCKS_API __attribute__((visibility("default")))
#else
#define VELOXD_BLOCKS_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-use-using,readability-identifier-naming): this is C */

/* ---- Results and names ------------------------------------------------------------------------------------ */

/* What a function returns (convention 1). */
enum VELBlockResult {
  VEL_BLOCK_OK = 0,            /* all was done */
  VEL_BLOCK_FAILED = 1,        /* a function of VELOxdDll has failed: VELGetLastError says why */
  VEL_BLOCK_BAD_CALL = 2,      /* an argument is wrong, so nothing was done (convention 2) */
  VEL_BLOCK_TOO_SMALL = 3,     /* names do not fit into the arrays for them: VELBlockNames says what they take */
  VEL_BLOCK_NO_HEADER = 4      /* the file has opened as an empty data set, because it has no header */
};

/* Where names go, and the numbers that belong to them. */
typedef struct VELBlockNames {
  size_t room;                 /* how many elements `numbers` has */
  size_t size;                 /* how many bytes `texts` has */
  uint64_t* numbers;           /* in ascending order */
  char* texts;                 /* one behind the other, each with a zero byte at its end */
  size_t count;                /* set: how many there are */
  size_t bytes;                /* set: how many bytes of `texts` they take */
} VELBlockNames;

/* ---- Files ------------------------------------------------------------------------------------------------ */

/* Result: the version of this library, such as "1.2.3". It stays valid and is no VELBlockResult. */
VELOXD_BLOCKS_API const char* VELBlockVersion(void);

/* Opens a file as OpenOxdFile does and stores its handle in `file`. With VEL_BLOCK_FAILED and VEL_BLOCK_NO_HEADER, that
 * is the handle under which the library keeps what it has loaded: to be closed, or used as any other. It is 0 if there is
 * none. */
VELOXD_BLOCKS_API int32_t VELBlockOpen(const char* filename, uint64_t* file);

/* ---- Names ------------------------------------------------------------------------------------------------ */

/* Ids and names of all groups of a file. With VEL_BLOCK_TOO_SMALL, neither array is of use, and `count` and `bytes` say
 * what the names up to the first take for which there is no room. All of them may take more than that. */
VELOXD_BLOCKS_API int32_t VELBlockGroups(uint64_t file, VELBlockNames* names);

/* The same for the channels of a group: positions of slots that hold one, and the names of the signal axes. */
VELOXD_BLOCKS_API int32_t VELBlockChannels(uint64_t file, uint64_t group, VELBlockNames* names);

/* ---- Lines ------------------------------------------------------------------------------------------------ */

/* Stores how many lines a channel has and how many points each of them has. Otherwise neither is changed. */
VELOXD_BLOCKS_API int32_t VELBlockShape(uint64_t file, uint64_t group, uint64_t channel, uint64_t* lines, uint64_t* points);

/* Stores, for each line, how many of its points were acquired. `acquired` has `count` elements. */
VELOXD_BLOCKS_API int32_t VELBlockAcquired(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, uint64_t* acquired);

/* Stores min and range of the point axis of each line. Each array has `count` elements. */
VELOXD_BLOCKS_API int32_t VELBlockPointAxes(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, double* minimums, double* ranges);

/* Reads lines through `operation`, a line operator, as raw samples or real values. What GetChannelData_LineRaw leaves as it
 * was, because the points were not acquired or the operator takes more samples, becomes INT32_MIN or a quiet NaN. */
VELOXD_BLOCKS_API int32_t VELBlockReadRaw(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first, const uint64_t* lines, uint64_t count, int32_t* rows, int64_t pitch);
VELOXD_BLOCKS_API int32_t VELBlockReadReal(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first, const uint64_t* lines, uint64_t count, double* rows, int64_t pitch);

/* Writes whole lines of raw samples or real values, as SetChannelData_LineRaw and SetChannelData_LineReal do. Of several
 * rows for one line, the last one is kept. */
VELOXD_BLOCKS_API int32_t VELBlockWriteRaw(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, const int32_t* rows, int64_t pitch);
VELOXD_BLOCKS_API int32_t VELBlockWriteReal(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines, uint64_t count, const double* rows, int64_t pitch);

/* NOLINTEND(modernize-use-using,readability-identifier-naming) */

#ifdef __cplusplus
}
#endif

#endif
