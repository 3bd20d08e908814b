#include "processing/Units.h"

#include "velflexlib/fx/FxProperty.h"

namespace veltaris::processing {

namespace {

CUnit ReduceSymbol(std::string_view symbol)
{
    const auto one = velflexlib::fx::ParseFxProperty(std::string("1 ").append(symbol));
    return one ? CUnit{one->value, one->unit} : CUnit{1, std::string(symbol)};
}

} // namespace

CUnit ReduceUnit(std::string_view unit)
{
    const auto slash = unit.find('/');
    CUnit reduced = ReduceSymbol(unit.substr(0, slash));
    if (slash == std::string_view::npos)
        return reduced;
    const CUnit denominator = ReduceSymbol(unit.substr(slash + 1));
    return {reduced.factor / denominator.factor, reduced.name + "/" + denominator.name};
}

} // namespace veltaris::processing
