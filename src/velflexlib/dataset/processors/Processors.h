// The kinds of processors. To add one, derive it from CProcessorBase here and list it in ProcessorFactory.cpp.
//
// What CProcessorBase says of invariants and threads holds for all of them.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"
#include "velflexlib/fx/FxProperty.h"

namespace veltaris::velflexlib::dataset {

// Derives the slope of a curve within a range of its point axis. The ends of the range are in metres unless the file
// gives them another unit.
class CProcessorSlope : public CProcessorBase
{
public:
    static constexpr CProcessorKind kind{"Slope", "{AB0B4062-81AF-464B-A7F7-75B11891ACF8}", "Slope"};

    explicit CProcessorSlope(std::uint64_t instanceNo) : CProcessorBase(kind, instanceNo) {}

    const fx::CFxProperty& GetRangeMin() const { return m_rangeMin; }
    const fx::CFxProperty& GetRangeMax() const { return m_rangeMax; }

private:
    void LoadOwnParameters(const velstdlib::util::CVELConfig& document) override;
    void SaveOwnParameters(velstdlib::util::CVELConfig& document) const override;

    fx::CFxProperty m_rangeMin{0, "m"};
    fx::CFxProperty m_rangeMax{0, "m"};
};

// Derives the largest adhesion of a curve. Has no parameters of its own.
class CProcessorMaxAdhesion : public CProcessorBase
{
public:
    static constexpr CProcessorKind kind{"MaxAdhesion", "{1220F4A8-053A-494D-B28C-3635059D1530}", "Maximum adhesion"};

    explicit CProcessorMaxAdhesion(std::uint64_t instanceNo) : CProcessorBase(kind, instanceNo) {}
};

// Derives the depth of indentation from a curve. Has no parameters of its own.
class CProcessorIndentation : public CProcessorBase
{
public:
    static constexpr CProcessorKind kind{"Indentation", "{138707ED-FD93-4E28-B2B0-C5DA628CB815}", "Indentation"};

    explicit CProcessorIndentation(std::uint64_t instanceNo) : CProcessorBase(kind, instanceNo) {}
};

} // namespace veltaris::velflexlib::dataset
