// Which instructions the processor has, for loops that are compiled once for each of these sets.
#pragma once

namespace veltaris::velstdlib::machine {

// Baseline: what every processor of the architecture has. Avx2: of x86-64, with FMA. Avx512: of x86-64, for integers of
// all widths, and all that belongs to Avx2.
enum class InstructionSet
{
    Baseline,
    Avx2,
    Avx512,
};

// The widest of these that this processor has. May be called by any number of threads.
InstructionSet WidestInstructionSet();

} // namespace veltaris::velstdlib::machine
