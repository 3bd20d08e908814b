/* The commands of veloxd_mex. Each takes the arguments that the table in veloxd_mex.c counts: the number of the file
 * first, and what the name of the function asks for. It gives a result or NULL; a failure that it leaves stored becomes
 * an error. */
#ifndef VELOXD_MATLAB_COMMANDS_H
#define VELOXD_MATLAB_COMMANDS_H

#include "values.h"

/* The name of a file is the first argument of these two. */
mxArray* Open(Arguments arguments);
mxArray* Create(Arguments arguments);
mxArray* Close(Arguments arguments);
mxArray* Rename(Arguments arguments);
mxArray* Save(Arguments arguments); /* file, its name for the text of a failure */

mxArray* Groups(Arguments arguments);
mxArray* GroupName(Arguments arguments);
mxArray* SetNameOfGroup(Arguments arguments);
mxArray* AddGroup(Arguments arguments);    /* file, bits of a sample */
mxArray* Channels(Arguments arguments);    /* the slots that hold a channel */
mxArray* SetChannels(Arguments arguments); /* file, group, count, lines, points; discards what the group had */
mxArray* Shape(Arguments arguments);       /* lines and points */

/* A column for each line, so that lines lie in memory as the library has them. */
mxArray* ReadRaw(Arguments arguments);
mxArray* ReadReal(Arguments arguments);
mxArray* Write(Arguments arguments); /* int32 samples are raw, double ones real */

/* The fourth argument is the axis: 0 along a line, 1 across the lines, 2 of the samples. */
mxArray* Axis(Arguments arguments); /* a cell: name, unit, minimum and range */
mxArray* SetAxis(Arguments arguments);

/* Information is a tree of nodes. */
mxArray* Root(Arguments arguments);
mxArray* Children(Arguments arguments);
mxArray* IsGroup(Arguments arguments);
mxArray* NodeName(Arguments arguments);
mxArray* NodeValue(Arguments arguments);
mxArray* SetNodeValue(Arguments arguments);
mxArray* AddItem(Arguments arguments);
mxArray* AddNodeGroup(Arguments arguments);

#endif
