// The kinds of processors. To add one, derive it from CProcessorBase here, list it in ProcessorFactory.cpp, and say in
// src/processing/ what it computes.
//
// What CProcessorBase says of invariants and threads holds for all of them.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"
#include "velflexlib/fx/FxProperty.h"

#include <array>

namespace veltaris::velflexlib::dataset {

// Derives the slope of a curve within a range of its point axis: of the whole curve if both ends are 0.
class CProcessorSlope : public CProcessorBase
{
public:
    static constexpr std::array parameters{CParameterKind{"RangeMin", 0, "m"}, CParameterKind{"RangeMax", 0, "m"}};
    static constexpr CProcessorKind kind{"Slope", "{AB0B4062-81AF-464B-A7F7-75B11891ACF8}", "Slope", parameters};

    explicit CProcessorSlope(std::uint64_t instanceNo) : CProcessorBase(kind, instanceNo) {}

    const fx::CFxProperty& GetRangeMin() const { return GetParameter(0); }
    const fx::CFxProperty& GetRangeMax() const { return GetParameter(1); }
};

// One table behind another.
template <std::size_t first, std::size_t second>
constexpr auto Joined(const std::array<CParameterKind, first>& a, const std::array<CParameterKind, second>& b)
{
    std::array<CParameterKind, first + second> joined{};
    for (std::size_t i = 0; i < joined.size(); ++i)
        joined[i] = i < first ? a[i] : b[i - first];
    return joined;
}

// What the processors of force curves have in common.
class CForceProcessor : public CProcessorBase
{
public:
    // Both ends of the baseline range are 0 where it is to be found. Spring constant and sensitivity are 0 where the
    // measurement information says them. The surface is 0 where the data tell it, 1 at high and 2 at low positions.
    // Repulsion is 0 if it raises the signal and 1 if it lowers it.
    static constexpr std::array parameters{
        CParameterKind{"BaselineMin", 0, "m"},      CParameterKind{"BaselineMax", 0, "m"},
        CParameterKind{"Threshold", 5, ""}, // in noise widths
        CParameterKind{"SpringConstant", 0, "N/m"}, CParameterKind{"Sensitivity", 0, "m/V"},
        CParameterKind{"Surface", 0, ""},           CParameterKind{"Repulsion", 0, ""},
        CParameterKind{"BaselineShare", 0.4, ""}}; // of the curve

    const fx::CFxProperty& GetBaselineMin() const { return GetParameter(0); }
    const fx::CFxProperty& GetBaselineMax() const { return GetParameter(1); }
    const fx::CFxProperty& GetThreshold() const { return GetParameter(2); }
    const fx::CFxProperty& GetSpringConstant() const { return GetParameter(3); }
    const fx::CFxProperty& GetSensitivity() const { return GetParameter(4); }

protected:
    using CProcessorBase::CProcessorBase;
};

// Derives the largest adhesion of a curve.
class CProcessorMaxAdhesion : public CForceProcessor
{
public:
    static constexpr CProcessorKind kind{"MaxAdhesion", "{1220F4A8-053A-494D-B28C-3635059D1530}", "Maximum adhesion",
                                         parameters};

    explicit CProcessorMaxAdhesion(std::uint64_t instanceNo) : CForceProcessor(kind, instanceNo) {}
};

// Derives the depth of indentation from a curve.
class CProcessorIndentation : public CForceProcessor
{
public:
    // The law of contact is 0 for a line, 1 for a sphere and 2 for a cone. It is fitted to the share of the points
    // behind the contact.
    static constexpr std::array parameters =
        Joined(CForceProcessor::parameters,
               std::array{CParameterKind{"ContactLaw", 0, ""}, CParameterKind{"FitShare", 0.5, ""}});
    static constexpr CProcessorKind kind{"Indentation", "{138707ED-FD93-4E28-B2B0-C5DA628CB815}", "Indentation",
                                         parameters};

    explicit CProcessorIndentation(std::uint64_t instanceNo) : CForceProcessor(kind, instanceNo) {}
};

} // namespace veltaris::velflexlib::dataset
