#include "velflexlib/dataset/operators/LineOperator.h"

#include "velflexlib/dataset/operators/LineOperators.h"

#include <array>
#include <cstddef>

namespace veltaris::velflexlib::dataset {

namespace {

const CLineOpRAW raw;
const CLineOpAvg mean;
const CLineOpPlain line;
const CLineOpDiff derived;
const CLineOpParable parabola;
const CLineOpPolyFit4 polynomial;

struct OperatorRow
{
    LineOpID id;
    std::string_view displayName;
    const CLineOperator& lineOperator;
};

constexpr std::array<OperatorRow, 6> operators{{{LineOpID::RawData, "Raw data", raw},
                                                {LineOpID::MeanFit, "Mean fit", mean},
                                                {LineOpID::LineFit, "Line fit", line},
                                                {LineOpID::DerivedData, "Derived data", derived},
                                                {LineOpID::ParabolaFit, "Parabola fit", parabola},
                                                {LineOpID::PolynomialFit, "Polynomial fit", polynomial}}};

const OperatorRow& RowOf(LineOpID id)
{
    return operators.at(static_cast<std::size_t>(id));
}

} // namespace

const velstdlib::util::BiMapper<LineOpID, std::int32_t>& LineOpCodes()
{
    static const velstdlib::util::BiMapper<LineOpID, std::int32_t> codes{
        {LineOpID::RawData, 0},     {LineOpID::MeanFit, 1},     {LineOpID::LineFit, 2},
        {LineOpID::DerivedData, 3}, {LineOpID::ParabolaFit, 4}, {LineOpID::PolynomialFit, 5}};
    return codes;
}

std::string_view GetDisplayName(LineOpID id)
{
    return RowOf(id).displayName;
}

const CLineOperator& GetLineOperator(LineOpID id)
{
    return RowOf(id).lineOperator;
}

// Every code is the number of its operator. The table of codes tells in its own words which are none.
const CLineOperator& GetLineOperator(std::int32_t code)
{
    const auto row = static_cast<std::size_t>(static_cast<std::uint32_t>(code));
    return row < operators.size() ? operators[row].lineOperator : GetLineOperator(LineOpCodes().map(code));
}

} // namespace veltaris::velflexlib::dataset
