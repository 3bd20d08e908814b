#include "values.h"

#include "failures.h"

#include <string.h>

uint64_t Number(const mxArray* value)
{
    if (!mxIsUint64(value) || mxGetNumberOfElements(value) != 1)
        mexErrMsgIdAndTxt("veloxd:argument", "A number is to be a uint64 scalar.");
    return *(const uint64_t*)mxGetData(value);
}

char* Text(const mxArray* value)
{
    if (!mxIsUint8(value) && !mxIsEmpty(value))
        mexErrMsgIdAndTxt("veloxd:argument", "A text is to be a row of uint8.");
    const size_t length = (size_t)mxGetNumberOfElements(value);
    char* const text = mxMalloc(length + 1);
    if (length > 0)
        memcpy(text, mxGetData(value), length);
    text[length] = '\0';
    if (strlen(text) != length)
        mexErrMsgIdAndTxt("veloxd:argument", "A text holds a zero character.");
    return text;
}

double Real(const mxArray* value)
{
    if (!mxIsDouble(value) || mxIsComplex(value) || mxGetNumberOfElements(value) != 1)
        mexErrMsgIdAndTxt("veloxd:argument", "A real number is to be a double scalar.");
    return mxGetScalar(value);
}

mxArray* Numbers(size_t count)
{
    return mxCreateNumericMatrix(1, (mwSize)count, mxUINT64_CLASS, mxREAL);
}

mxArray* FromNumber(uint64_t number)
{
    mxArray* const value = Numbers(1);
    *(uint64_t*)mxGetData(value) = number;
    return value;
}

mxArray* FromText(const char* text)
{
    const size_t length = strlen(text);
    mxArray* const value = mxCreateNumericMatrix(1, (mwSize)length, mxUINT8_CLASS, mxREAL);
    if (length > 0)
        memcpy(mxGetData(value), text, length);
    return value;
}

mxArray* TextOfPlace(Arguments arguments, PlaceText getter)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t place = Number(arguments[1]);
    char* buffer = mxMalloc(usualTextSize);
    getter(file, place, buffer, usualTextSize);
    const uint64_t needed = NeededSize();
    if (needed > 0) {
        buffer = mxMalloc(needed);
        getter(file, place, buffer, needed);
    }
    FailIfAsked();
    return FromText(buffer);
}
