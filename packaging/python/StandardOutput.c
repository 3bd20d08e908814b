/*
 * The archive of Boost.Log is compiled for programs. After each record, it flushes stdout, a variable of the C library
 * that code for programs reaches in a way in which shared libraries cannot. By the linker's --wrap=stdout, it gets this
 * one instead: the stream that the process has begun with. What prints the records uses the C library's own.
 */
#include <stdio.h>

extern FILE _IO_2_1_stdout_;

FILE* __wrap_stdout = &_IO_2_1_stdout_;
