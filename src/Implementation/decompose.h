#ifndef Orrelin_Implementation_decompose
#define Orrelin_Implementation_decompose

#include <Magnum/Magnum.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>

namespace OrrelinEngine {

/* Parts of a transformation matrix */
struct Transformation {
    Magnum::Math::Vector3<float> translation;
    Magnum::Math::Quaternion<float> rotation;
    Magnum::Math::Vector3<float> scaling;
};

/* Shear is lost. A mirroring matrix gives a negative x scaling. A column of no
   length has scaling 0 and doesn't count for the rotation, which is the
   identity if the other columns don't determine one. */
Transformation decompose(const Magnum::Math::Matrix4<float>& matrix);

}

#endif
