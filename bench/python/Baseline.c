/* The baseline of the Python package: the same work in C, which calls the library line by line.
 *
 *   bench_python_baseline values|raw FILE       reads all lines of the first channel of an open file
 *   bench_python_baseline opened|images|names FOLDER
 *                                               opens all files 0.oxd, 1.oxd, ... of a folder one after the other, and
 *                                               reads no more of them, the first channel, or all names
 *
 * Prints the seconds by the clock and of the processor, and a checksum. What is needed first, such as opening the file
 * whose lines are read, is not timed. */
#include <VELOxdDll.h>

#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum
{
    maximumText = 4096
};

typedef struct
{
    struct timespec clock;
    struct timespec processor;
} Start;

static Start Begin(void)
{
    Start start;
    clock_gettime(CLOCK_MONOTONIC, &start.clock);
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &start.processor);
    return start;
}

static double SecondsSince(struct timespec start, clockid_t clock)
{
    struct timespec now;
    clock_gettime(clock, &now);
    return (double)(now.tv_sec - start.tv_sec) + 1e-9 * (double)(now.tv_nsec - start.tv_nsec);
}

static void PrintSince(Start start)
{
    const double processor = SecondsSince(start.processor, CLOCK_PROCESS_CPUTIME_ID);
    printf("%.9f %.9f ", SecondsSince(start.clock, CLOCK_MONOTONIC), processor);
}

static bool Failed(void)
{
    const bool failed = VELHasLastError();
    if (failed)
        fprintf(stderr, "%s\n", VELGetLastError());
    return failed;
}

/* A new array with the samples of the first channel of group 0; the caller frees it. */
static void* ReadAll(uint64_t file, bool raw, size_t* bytes)
{
    const uint64_t lines = GetChannelData_Lines(file, 0, 0);
    const uint64_t points = GetChannelData_Points(file, 0, 0);
    *bytes = (size_t)(lines * points) * (raw ? sizeof(int32_t) : sizeof(double));
    char* samples = malloc(*bytes + 1);
    for (uint64_t line = 0; samples != NULL && line < lines; ++line) {
        char* target = samples + line * (*bytes / lines);
        if (raw)
            GetChannelData_LineRaw(file, 0, 0, line, 0, (int32_t*)target);
        else
            GetChannelData_LineReal(file, 0, 0, line, 0, (double*)target);
    }
    return samples;
}

static uint64_t Checksum(const char* samples, size_t bytes)
{
    uint64_t checksum = 0;
    for (size_t i = 0; samples != NULL && i + sizeof checksum <= bytes; i += sizeof checksum) {
        uint64_t word = 0;
        memcpy(&word, samples + i, sizeof word);
        checksum ^= word;
    }
    return checksum;
}

static void TimeReading(const char* path, bool raw)
{
    const uint64_t file = OpenOxdFile(path);
    size_t bytes = 0;
    const Start start = Begin();
    char* samples = ReadAll(file, raw, &bytes);
    PrintSince(start);
    printf("%" PRIu64 "\n", Checksum(samples, bytes));
    free(samples);
    CloseOxdFile(file);
}

/* The characters of the names of a file's groups and channels. */
static uint64_t LengthOfNames(uint64_t file)
{
    char name[256];
    uint64_t length = 0;
    const uint64_t groups = GetGroupCount(file);
    for (uint64_t group = 0; group < groups; ++group) {
        GetGroupName(file, group, name, sizeof name);
        length += strlen(name);
        const uint64_t channels = GetChannelCount(file, group);
        for (uint64_t channel = 0; channel < channels; ++channel) {
            if (!HasChannelBuffer(file, group, channel))
                continue;
            GetChannelData_SignalAxisName(file, group, channel, name, sizeof name);
            length += strlen(name);
        }
    }
    return length;
}

/* The first samples of an image, all of which are read. */
static uint64_t BeginOfImage(uint64_t file)
{
    size_t bytes = 0;
    char* samples = ReadAll(file, true, &bytes);
    const uint64_t word = Checksum(samples, bytes < sizeof word ? bytes : sizeof word);
    free(samples);
    return word;
}

static uint64_t Nothing(uint64_t file)
{
    (void)file;
    return 1;
}

static void TimeOpening(const char* folder, uint64_t (*use)(uint64_t file))
{
    char path[maximumText];
    uint64_t checksum = 0;
    const Start start = Begin();
    for (int number = 0;; ++number) {
        snprintf(path, sizeof path, "%s/%d.oxd", folder, number);
        const uint64_t file = OpenOxdFile(path);
        if (file == 0)
            break; /* there are no more */
        checksum += use(file);
        CloseOxdFile(file);
    }
    PrintSince(start);
    printf("%" PRIu64 "\n", checksum);
    VELGetLastError(); /* that of the file behind the last */
}

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const bool raw = strcmp(argv[1], "raw") == 0;
    if (raw || strcmp(argv[1], "values") == 0)
        TimeReading(argv[2], raw);
    else
        TimeOpening(argv[2], strcmp(argv[1], "images") == 0  ? BeginOfImage
                             : strcmp(argv[1], "names") == 0 ? LengthOfNames
                                                             : Nothing);
    return Failed();
}
