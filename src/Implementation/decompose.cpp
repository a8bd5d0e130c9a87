#include "Implementation/decompose.h"

#include <cmath>
#include <Magnum/Math/Algorithms/GramSchmidt.h>
#include <Magnum/Math/Matrix.h>
#include <Magnum/Math/Vector3.h>

namespace OrrelinEngine {

namespace {

/* In double precision the length of no vector of floats over- or underflows */
typedef Magnum::Math::Vector3<double> Axis;
typedef Magnum::Math::Matrix3x3<double> Axes;

/* Below this the axes lie in a plane. It is 3e-11 at least where no singular
   value of the matrix is less than 1e-5 of another. */
constexpr double MinDeterminant = 1.0e-11;

Axis column(const Magnum::Math::Matrix4<float>& matrix, std::size_t i) {
    return {double(matrix[i][0]), double(matrix[i][1]), double(matrix[i][2])};
}

/* The direction at right angles to the other two, for one that is missing */
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

    /* Not a number if the matrix holds such */
    if(std::abs(axes.determinant()) > MinDeterminant) {
        /* The second time takes away what rounding left of axes that were
           almost in a plane */
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
