/* Values of MATLAB as those of the library, and the other way round. Numbers are uint64 scalars, texts are rows of
 * uint8 in UTF-8. Values of another kind are an error "veloxd:argument". What is allocated belongs to MATLAB, which
 * frees it when an error ends a call. */
#ifndef VELOXD_MATLAB_VALUES_H
#define VELOXD_MATLAB_VALUES_H

#include <mex.h>
#include <stddef.h>
#include <stdint.h>

typedef const mxArray* const* Arguments;

uint64_t Number(const mxArray* value);
char* Text(const mxArray* value); /* without zero characters inside */
double Real(const mxArray* value);

mxArray* Numbers(size_t count); /* a row of zeros */
mxArray* FromNumber(uint64_t number);
mxArray* FromText(const char* text);

typedef void (*PlaceText)(uint64_t file, uint64_t place, char* buffer, uint64_t size);

/* The text of a group or of a node: the first two arguments are the file and the place. */
mxArray* TextOfPlace(Arguments arguments, PlaceText getter);

#endif
