/* Names of files as the library takes them. */
#ifndef VELOXD_MATLAB_FILE_NAMES_H
#define VELOXD_MATLAB_FILE_NAMES_H

/* A name in UTF-8 as it is elsewhere, and on Windows in the system's code page. A name that this cannot express is an
 * error "veloxd:file", rather than another file. */
const char* SystemFileName(const char* name);

#endif
