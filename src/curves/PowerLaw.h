// A power law that a deflection follows behind the contact point: deflection ~ indentation^p, where the indentation is
// position minus deflection.
#pragma once

#include "curves/CurveOptions.h"

namespace veltaris::curves {

// Adds points and finds where the law reaches a deflection of 0. deflection^(1/p) is a straight line over position
// minus deflection; its least-squares fit is kept up as points come (West, Communications of the ACM 22, 1979). One
// object belongs to one thread at a time.
class CPowerLaw
{
public:
    // Sphere or Cone.
    explicit CPowerLaw(ContactLaw law) : m_law(law) {}

    // Both in metres: the position, counted towards the surface from any origin, and the deflection, above 0.
    void Add(double position, double deflection);

    // With three points or more: whether the law rises, and the position where it begins, with its standard error.
    bool Rises() const { return m_product > 0; }
    double Begin() const { return m_meanPlace - m_meanRoot * m_spread / m_product; }
    double ErrorOfBegin() const;

private:
    double RootOf(double deflection) const;

    ContactLaw m_law;
    double m_points = 0;
    double m_meanPlace = 0; // of position minus deflection
    double m_meanRoot = 0;  // of deflection^(1/p)
    double m_spread = 0;    // sums of products of deviations: place and place, place and root, root and root
    double m_product = 0;
    double m_squares = 0;
};

} // namespace veltaris::curves
