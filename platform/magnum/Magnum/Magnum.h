#ifndef Magnum_Magnum_h
#define Magnum_Magnum_h

/** @file
 * @brief Forward declarations and basic types for the @ref Magnum namespace
 */

#include <Corrade/Utility/Utility.h>

#include "Magnum/Types.h"
#include "Magnum/Math/Math.h"

namespace Magnum {

using namespace Corrade;

using Corrade::Utility::Debug;
using Corrade::Utility::Error;
using Corrade::Utility::Warning;

/** @brief Vectors, matrices and quaternions of floats */
typedef Math::Vector3<Float> Vector3;
typedef Math::Vector4<Float> Vector4;
typedef Math::Matrix3x3<Float> Matrix3x3;
typedef Math::Matrix4x4<Float> Matrix4x4;
typedef Math::Matrix4<Float> Matrix4;
typedef Math::Quaternion<Float> Quaternion;

/** @brief Angles */
typedef Math::Deg<Float> Deg;
typedef Math::Rad<Float> Rad;

}

#endif
