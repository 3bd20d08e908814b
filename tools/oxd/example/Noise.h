// Noise that is the same on every machine. The C++ standard fixes what std::mt19937 gives but not what its
// distributions make of that, so these are made here, of operations that every processor rounds alike.
#pragma once

#include <cstdint>
#include <random>

namespace oxd {

// Each number depends on the seed and on how many were drawn before.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : m_engine(seed) {}

    // Evenly distributed from 0 up to, but not including, 1.
    double Uniform() { return static_cast<double>(m_engine()) * 0x1p-32; }

    // Close to normally distributed, with mean 0 and standard deviation 1: the sum of twelve uniform numbers has
    // variance 1.
    double Normal()
    {
        double sum = -6;
        for (int i = 0; i < 12; ++i) {
            sum += Uniform();
        }
        return sum;
    }

private:
    std::mt19937 m_engine;
};

// A disturbance that wanders but keeps returning to 0, such as that of temperature or of a feedback loop. `step` is the
// standard deviation of what is added each time.
class Drift
{
public:
    explicit Drift(double step) : m_step(step) {}

    double Value() const { return m_value; }
    void Advance(Noise& noise) { m_value = 0.9 * m_value + m_step * noise.Normal(); }

private:
    double m_step;
    double m_value = 0;
};

} // namespace oxd
