#ifndef Corrade_Tags_h
#define Corrade_Tags_h

/** @file
 * @brief Construction tags
 */

namespace Corrade {

/** @brief Tag of value initialization */
struct ValueInitT {
    struct Init {};
    constexpr explicit ValueInitT(Init) {}
};

/** @brief Tag of leaving memory uninitialized */
struct NoInitT {
    struct Init {};
    constexpr explicit NoInitT(Init) {}
};

/** @brief Tag of construction from a list or arguments in place */
struct InPlaceInitT {
    struct Init {};
    constexpr explicit InPlaceInitT(Init) {}
};

/** @brief Value initialization */
constexpr ValueInitT ValueInit{ValueInitT::Init{}};

/** @brief No initialization */
constexpr NoInitT NoInit{NoInitT::Init{}};

/** @brief In-place initialization */
constexpr InPlaceInitT InPlaceInit{InPlaceInitT::Init{}};

}

#endif
