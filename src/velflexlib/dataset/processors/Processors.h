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

// What the processors of force curves have in common.
class CForceProcessor : public CProcessorBase
{
public:
    // Both ends of the baseline range are 0 where it is to be found. Spring constant and sensitivity are 0 where the
    // measurement information says them.
    static constexpr std::array parameters{CParameterKind{"BaselineMin", 0, "m"}, CParameterKind{"BaselineMax", 0, "m"},
                                           CParameterKind{"Threshold", 5, ""}, // in noise widths
                                           CParameterKind{"SpringConstant", 0, "N/m"},
                                           CParameterKind{"Sensitivity", 0, "m/V"}};

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
    static constexpr CProcessorKind kind{"Indentation", "{138707ED-FD93-4E28-B2B0-C5DA628CB815}", "Indentation",
                                         parameters};

    explicit CProcessorIndentation(std::uint64_t instanceNo) : CForceProcessor(kind, instanceNo) {}
};

} // namespace veltaris::velflexlib::dataset
