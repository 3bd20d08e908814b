// Prints what the library reads of each file named on the command line, as a line of JSON: all samples through all
// operators, axes and measurement information. A file that cannot be opened is `null`.
#include <VELOxdDll.h>

#include <stdio.h>
#include <stdlib.h>

#define TEXT_SIZE 65536
#define OPERATORS 6

static char text[TEXT_SIZE];

static void PrintText(void)
{
    putchar('"');
    for (const unsigned char* c = (const unsigned char*)text; *c; ++c) {
        if (*c < ' ' || *c == '"' || *c == '\\')
            printf("\\u%04x", *c);
        else
            putchar(*c);
    }
    putchar('"');
}

static bool Succeeded(void)
{
    const bool failed = VELHasLastError();
    if (failed)
        VELGetLastError();
    return !failed;
}

static void PrintLine(uint64_t file, uint64_t group, uint64_t channel, uint64_t line, int32_t* raw)
{
    const uint64_t count = GetChannelData_PointsPerLine(file, group, channel, line);
    for (int32_t op = 0; op < OPERATORS; ++op) {
        printf("%s[", op ? "," : "");
        for (uint64_t i = 0; i < count; ++i)
            raw[i] = INT32_MIN; // no corrected sample is: where an operator gives none, the array stays as it was
        GetChannelData_LineRaw(file, group, channel, line, op, raw);
        const bool there = Succeeded() && (count == 0 || raw[0] != INT32_MIN);
        for (uint64_t i = 0; there && i < count; ++i)
            printf("%s%d", i ? "," : "", raw[i]);
        putchar(']');
    }
}

static void PrintReals(uint64_t file, uint64_t group, uint64_t channel, uint64_t line, double* real)
{
    const uint64_t count = GetChannelData_PointsPerLine(file, group, channel, line);
    GetChannelData_LineReal(file, group, channel, line, 0, real);
    const bool there = Succeeded();
    for (uint64_t i = 0; there && i < count; ++i)
        printf("%s\"%.17g\"", i ? "," : "", real[i]);
}

static void PrintChannel(uint64_t file, uint64_t group, uint64_t channel)
{
    const uint64_t points = GetChannelData_Points(file, group, channel);
    const uint64_t lines = GetChannelData_Lines(file, group, channel);
    int32_t* raw = calloc(points + 1, sizeof *raw);
    double* real = calloc(points + 1, sizeof *real);
    GetChannelData_SignalAxisName(file, group, channel, text, TEXT_SIZE);
    printf("{\"points\":%llu,\"name\":", (unsigned long long)points);
    PrintText();
    GetChannelData_SignalAxisUnit(file, group, channel, text, TEXT_SIZE);
    printf(",\"unit\":");
    PrintText();
    printf(",\"lines\":[");
    for (uint64_t line = 0; line < lines; ++line) {
        printf("%s{\"axis\":[\"%.17g\",\"%.17g\"],\"raw\":[", line ? "," : "",
               GetChannelData_PointAxisMinPerLine(file, group, channel, line),
               GetChannelData_PointAxisRangePerLine(file, group, channel, line));
        PrintLine(file, group, channel, line, raw);
        printf("],\"real\":[");
        PrintReals(file, group, channel, line, real);
        printf("]}");
    }
    printf("]}");
    free(raw);
    free(real);
}

static void PrintGroup(uint64_t file, uint64_t group)
{
    GetGroupName(file, group, text, TEXT_SIZE);
    printf("{\"name\":");
    PrintText();
    printf(",\"channels\":[");
    const uint64_t count = GetChannelCount(file, group);
    for (uint64_t channel = 0; channel < count; ++channel) {
        printf("%s", channel ? "," : "");
        if (HasChannelBuffer(file, group, channel))
            PrintChannel(file, group, channel);
        else
            printf("null");
    }
    printf("]}");
}

static void PrintInformation(uint64_t file, uint64_t parent)
{
    putchar('[');
    const uint64_t count = GetMetaInfoItemChildCount(file, parent);
    uint64_t item = count ? SelectFirstChildMetaInfoItem(file, parent) : 0;
    for (uint64_t i = 0; i < count; ++i, item = i < count ? SelectNextMetaInfoItem(file, item) : 0) {
        printf("%s[", i ? "," : "");
        GetMetaInfoItemName(file, item, text, TEXT_SIZE);
        PrintText();
        putchar(',');
        if (IsMetaInfoItemAGroup(file, item)) {
            PrintInformation(file, item);
        } else {
            GetMetaInfoItemValue(file, item, text, TEXT_SIZE);
            PrintText();
        }
        putchar(']');
    }
    putchar(']');
}

static void PrintFile(const char* name)
{
    const uint64_t file = OpenOxdFile(name);
    if (!Succeeded()) {
        printf("null\n");
    } else {
        const uint64_t groups = GetGroupCount(file);
        printf("{\"groups\":[");
        for (uint64_t group = 0; group < groups; ++group) {
            printf("%s", group ? "," : "");
            PrintGroup(file, group);
        }
        printf("],\"information\":");
        PrintInformation(file, GetMetaInfoTreeRootHandle(file));
        printf("}\n");
    }
    CloseOxdFile(file);
    Succeeded();
}

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        PrintFile(argv[i]);
    return 0;
}
