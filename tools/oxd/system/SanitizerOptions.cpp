// Only in builds with sanitizers: the font library keeps what it has read until the end of the process, for speed,
// which is no leak of this program.

// NOLINTBEGIN(bugprone-reserved-identifier,cert-*): the sanitizer looks for these names
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options()
{
    return "print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier,cert-*)
