#include "velflexlib/dataset/operators/LineOperatorTable.h"

#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

using Codes = velstdlib::util::BiMapper<LineOpID, std::int32_t>;

constexpr std::int32_t CodeOf(const CLineOperator& lineOperator)
{
    return static_cast<std::int32_t>(lineOperator.GetID());
}

template <std::size_t... Row>
Codes CodesOf(std::index_sequence<Row...> /*rows*/)
{
    return {{lineOperators[Row].GetID(), CodeOf(lineOperators[Row])}...};
}

constexpr bool AreRowsInOrderOfTheirCodes()
{
    for (std::size_t row = 0; row < lineOpCount; ++row) {
        if (std::cmp_not_equal(CodeOf(lineOperators[row]), row))
            return false;
    }
    return true;
}

static_assert(AreRowsInOrderOfTheirCodes(), "operators are found by their code as the index of their row");

} // namespace

const Codes& LineOpCodes()
{
    static const Codes codes = CodesOf(std::make_index_sequence<lineOpCount>());
    return codes;
}

const CLineOperator& GetLineOperator(LineOpID id)
{
    return lineOperators[static_cast<std::size_t>(id)];
}

// Known codes are looked up without the two-way table, because reading single pixels is to be fast. Any other code goes
// through it for the exception that it throws.
const CLineOperator& GetLineOperator(std::int32_t code)
{
    const bool known = code >= 0 && std::cmp_less(code, lineOpCount);
    return GetLineOperator(known ? static_cast<LineOpID>(code) : LineOpCodes().map(code));
}

} // namespace veltaris::velflexlib::dataset
