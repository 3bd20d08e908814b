// A straight line that was fitted to points of a curve by least squares, over the index of a point. In this form, about
// the mean of the indices, the errors of level and tilt do not depend on each other (Bevington and Robinson, Data
// Reduction and Error Analysis, chapter 6).
#pragma once

namespace veltaris::curves {

struct CLineFit
{
    double points = 0;    // how many were fitted
    double meanIndex = 0; // of these points
    double spread = 0;    // the sum of (index - meanIndex)^2 over them
    double level = 0;     // the value at meanIndex
    double tilt = 0;      // the change from one index to the next
    double residual = 0;  // the standard deviation of the points from the line: sqrt(sum of squares / (points - 2))

    constexpr double ValueAt(double index) const { return level + tilt * (index - meanIndex); }

    // The variance of ValueAt() if the points have the given standard deviation.
    constexpr double VarianceAt(double index, double noise) const
    {
        const double distance = index - meanIndex;
        return noise * noise * (1 / points + distance * distance / spread);
    }
};

} // namespace veltaris::curves
