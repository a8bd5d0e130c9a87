#ifndef Magnum_Magnum_h
#define Magnum_Magnum_h

/** @file
 * @brief Forward declarations for the @ref Magnum::Math namespace
 */

#include <cstddef>

namespace Magnum { namespace Math {

template<std::size_t, class> class Vector;
template<class> class Vector3;

template<std::size_t, class> class Matrix;
template<class T> using Matrix3x3 = Matrix<3, T>;
template<class T> using Matrix4x4 = Matrix<4, T>;
template<class> class Matrix4;

template<class> class Quaternion;

}}

#endif
