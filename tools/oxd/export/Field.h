// The samples of a channel on a grid that is fine enough for a picture.
#pragma once

#include "oxd/export/Scale.h"
#include "oxd/library/LineSource.h"

#include <cstddef>
#include <vector>

namespace oxd {

struct Extent
{
    std::size_t columns;
    std::size_t rows;
};

class Field
{
public:
    // Each cell is the mean of the samples in it, and NaN if there are none. At most as many as there are samples.
    Field(LineSource& source, Extent most);

    Extent Size() const { return m_size; }
    double At(std::size_t column, std::size_t row) const { return m_values[row * m_size.columns + column]; }

    // Without the lowest and the highest hundredth, which may be spikes. Scale::Nothing() if there are no values.
    Scale Contrast() const;

private:
    Extent m_size;
    std::vector<double> m_values; // row by row
};

} // namespace oxd
