#include "velflexlib/dataset/LineOperator.h"

#include "velflexlib/dataset/LineOperators.h"

#include <array>
#include <cstddef>

namespace veltaris::velflexlib::dataset {

namespace {

template <class Operator>
std::unique_ptr<CLineOperator> Create()
{
    return std::make_unique<Operator>();
}

struct OperatorRow
{
    LineOpID id;
    std::string_view displayName;
    std::unique_ptr<CLineOperator> (*create)();
};

constexpr std::array<OperatorRow, 6> operators{{{LineOpID::RawData, "Raw data", Create<CLineOpRAW>},
                                                {LineOpID::MeanFit, "Mean fit", Create<CLineOpAvg>},
                                                {LineOpID::LineFit, "Line fit", Create<CLineOpPlain>},
                                                {LineOpID::DerivedData, "Derived data", Create<CLineOpDiff>},
                                                {LineOpID::ParabolaFit, "Parabola fit", Create<CLineOpParable>},
                                                {LineOpID::PolynomialFit, "Polynomial fit", Create<CLineOpPolyFit4>}}};

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

LineOpID LineOpFromCode(std::int32_t code)
{
    return LineOpCodes().map(code);
}

std::string_view GetDisplayName(LineOpID id)
{
    return RowOf(id).displayName;
}

std::unique_ptr<CLineOperator> CreateLineOperator(LineOpID id)
{
    return RowOf(id).create();
}

} // namespace veltaris::velflexlib::dataset
