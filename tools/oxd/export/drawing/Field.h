// The samples of a channel on a grid that is no finer than a picture can show.
#pragma once

#include "oxd/export/drawing/LineSource.h"
#include "oxd/picture/Extent.h"

#include <cstddef>
#include <vector>

namespace oxd {

// Holds one value for each cell, and so takes no more memory for a large channel than for its picture. Row 0 is the
// first line.
class Field
{
public:
    // Reads the whole source once. The grid has at most `most` cells in either direction, and no more than there are
    // samples. The value of a cell is the mean of the samples in it, or NaN if there are none.
    Field(LineSource& source, Extent most);

    Extent Size() const { return m_size; }
    double At(std::size_t column, std::size_t row) const { return m_values[row * m_size.columns + column]; }

    const std::vector<double>& Values() const { return m_values; }

private:
    Extent m_size;
    std::vector<double> m_values; // row by row
};

} // namespace oxd
