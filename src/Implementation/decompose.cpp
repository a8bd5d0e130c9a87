/* Takes the lengths of the columns as the scaling, and makes a rotation of
   their directions by Gram-Schmidt. The result has to be a valid rotation for
   any matrix that a tool can produce, also a flat or a mirroring one, so:

   -    A column of no length gets the direction at right angles to the others.
   -    Directions in one plane have no rotation that's close to them, and
        Gram-Schmidt would divide by nothing. They become the identity.
   -    No rotation gives a left-handed system, as a mirroring matrix has. The
        x axis is turned around, and a negative x scaling turns it back. */

#include "Implementation/decompose.h"

#include <cmath>
#include <Magnum/Math/Algorithms/GramSchmidt.h>
#include <Magnum/Math/Matrix.h>
#include <Magnum/Math/Vector3.h>

namespace OrrelinEngine {

namespace {

/* Double, as the squares of large or small floats leave the range of float */
typedef Magnum::Math::Vector3<double> Axis;
typedef Magnum::Math::Matrix3x3<double> Axes;

/* Axes with a smaller determinant count as lying in a plane. A matrix none of
   whose singular values is less than 1e-5 of another has 5e-10 at least. */
constexpr double MinDeterminant = 1.0e-11;

Axis column(const Magnum::Math::Matrix4<float>& matrix, std::size_t i) {
    return {double(matrix[i][0]), double(matrix[i][1]), double(matrix[i][2])};
}

/* Gives each axis without length the direction at right angles to the other
   two; none if those have the same direction or lack one as well */
void completeAxes(Axes& axes, const double (&lengths)[3]) {
    for(std::size_t i = 0; i != 3; ++i) {
        if(lengths[i] > 0.0)
            continue;
        const Axis axis = Magnum::Math::cross(
            Axis{axes[(i + 1) % 3]}, Axis{axes[(i + 2) % 3]});
        const double length = axis.length();
        axes[i] = length > 0.0 ? axis / length : Axis{};
    }
}

}

Transformation decompose(const Magnum::Math::Matrix4<float>& matrix) {
    Axes axes;
    double lengths[3];
    for(std::size_t i = 0; i != 3; ++i) {
        axes[i] = column(matrix, i);
        lengths[i] = axes[i].length();
        if(lengths[i] > 0.0)
            axes[i] /= lengths[i];
    }
    completeAxes(axes, lengths);

    /* False also for a determinant that is not a number, so that a matrix with
       such entries has a valid rotation as well */
    if(std::abs(axes.determinant()) > MinDeterminant) {
        /* Of axes that are almost in a plane, the first pass leaves the small
           part that counts with much rounding error. The second one removes
           that. */
        Magnum::Math::Algorithms::gramSchmidtOrthonormalizeInPlace(axes);
        Magnum::Math::Algorithms::gramSchmidtOrthonormalizeInPlace(axes);
    } else
        axes = Axes{};
    if(axes.determinant() < 0.0) {
        axes[0] = -axes[0];
        lengths[0] = -lengths[0];
    }

    const auto rotation = Magnum::Math::Quaternion<double>::fromMatrix(axes);
    const Magnum::Math::Vector3<double> v = rotation.vector();
    return {matrix.translation(),
        {{float(v.x()), float(v.y()), float(v.z())}, float(rotation.scalar())},
        {float(lengths[0]), float(lengths[1]), float(lengths[2])}};
}

}
