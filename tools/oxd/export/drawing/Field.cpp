#include "oxd/export/drawing/Field.h"

#include <algorithm>
#include <cmath>

namespace oxd {

Field::Field(LineSource& source, Extent most)
    : m_size{std::min<std::size_t>(most.columns, source.Points()), std::min<std::size_t>(most.rows, source.Lines())},
      m_values(m_size.columns * m_size.rows)
{
    std::vector<double> counts(m_values.size());
    for (std::uint64_t line = 0; line < source.Lines(); ++line) {
        const std::size_t begin = line * m_size.rows / source.Lines() * m_size.columns;
        const std::vector<double> values = source.ReadShown(line);
        for (std::size_t point = 0; point < values.size(); ++point) {
            if (!std::isnan(values[point])) {
                const std::size_t cell = begin + point * m_size.columns / values.size();
                m_values[cell] += values[point];
                ++counts[cell];
            }
        }
    }
    std::transform(m_values.begin(), m_values.end(), counts.begin(), m_values.begin(), std::divides<>());
}

} // namespace oxd
