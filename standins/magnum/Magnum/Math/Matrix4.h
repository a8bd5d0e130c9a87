#ifndef Magnum_Math_Matrix4_h
#define Magnum_Math_Matrix4_h

/** @file
 * @brief Class @ref Magnum::Math::Matrix4
 */

#include "Magnum/Math/Matrix.h"

namespace Magnum { namespace Math {

/** @brief 3D transformation matrix */
template<class T> class Matrix4: public Matrix4x4<T> {
public:
    /** @brief Translation */
    static Matrix4<T> translation(const Vector3<T>& vector) {
        Matrix4<T> out;
        for(std::size_t i = 0; i != 3; ++i)
            out[3][i] = vector[i];
        return out;
    }

    /** @brief Translation part */
    Vector3<T> translation() const {
        return {(*this)[3][0], (*this)[3][1], (*this)[3][2]};
    }
};

}}

#endif
