#include "velstdlib/math/SIPrefix.h"

#include "velstdlib/string/NumberText.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <algorithm>
#include <array>

namespace veltaris::velstdlib::math {

namespace {

// Powers of ten up to 10^22 are exact, their reciprocals are not: small prefixes divide.
struct SIPrefix
{
    std::string_view symbol;
    double multiplier;
    double divisor;
};

constexpr std::array<SIPrefix, 18> prefixes{{{"y", 1, 1e24},
                                             {"z", 1, 1e21},
                                             {"a", 1, 1e18},
                                             {"f", 1, 1e15},
                                             {"p", 1, 1e12},
                                             {"n", 1, 1e9},
                                             {"\u00B5", 1, 1e6},
                                             {"\u03BC", 1, 1e6},
                                             {"m", 1, 1e3},
                                             {" ", 1, 1},
                                             {"k", 1e3, 1},
                                             {"M", 1e6, 1},
                                             {"G", 1e9, 1},
                                             {"T", 1e12, 1},
                                             {"P", 1e15, 1},
                                             {"E", 1e18, 1},
                                             {"Z", 1e21, 1},
                                             {"Y", 1e24, 1}}};

std::optional<double> ParseDecimal(std::string_view text)
{
    try {
        return string::ParseNumber<double>(text);
    } catch (const boost::bad_lexical_cast&) {
        return std::nullopt;
    }
}

} // namespace

std::string_view LeadingSIPrefix(std::string_view text)
{
    const auto leads = [&](const SIPrefix& prefix) { return text.starts_with(prefix.symbol); };
    const auto* const found = std::ranges::find_if(prefixes, leads);
    return found == prefixes.end() ? std::string_view() : found->symbol;
}

std::optional<double> ParseSINumber(std::string_view text)
{
    if (const auto plain = ParseDecimal(text)) // also "inf" and "nan", which end like prefixes
        return plain;
    const auto trails = [&](const SIPrefix& prefix) { return text.ends_with(prefix.symbol); };
    const auto* const found = std::ranges::find_if(prefixes, trails);
    if (found == prefixes.end())
        return std::nullopt;
    const auto number = ParseDecimal(text.substr(0, text.size() - found->symbol.size()));
    return number ? std::optional(*number * found->multiplier / found->divisor) : std::nullopt;
}

} // namespace veltaris::velstdlib::math
