#include <Magnum/Magnum.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <gtest/gtest.h>

namespace {

using namespace Magnum;
using namespace Magnum::Math::Literals;

TEST(Math, transformations) {
    const Vector3 axis = Vector3{1.0f, 2.0f, -2.0f}.normalized();
    const Matrix4 rotation = Matrix4::rotation(Deg{50.0f}, axis);
    EXPECT_TRUE(rotation.rotationScaling() ==
        Quaternion::rotation(50.0_degf, axis).toMatrix());
    EXPECT_TRUE(Matrix4::rotationX(90.0_degf) * Matrix4::rotationY(90.0_degf) ==
        Matrix4::rotationZ(90.0_degf) * Matrix4::rotationX(90.0_degf));

    const Matrix4 transformation = Matrix4::translation({1.0f, 2.0f, 3.0f}) *
        rotation * Matrix4::scaling({2.0f, 3.0f, 4.0f});
    EXPECT_TRUE(transformation.translation() == (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_TRUE(Vector3{transformation.rotationScaling()[1]} / 3.0f ==
        Vector3{rotation.rotationScaling()[1]});
    EXPECT_TRUE(Matrix4::from(transformation.rotationScaling(),
                    transformation.translation()) == transformation);
    EXPECT_FALSE(transformation == rotation);
}

#ifndef NDEBUG
TEST(Math, notARotation) {
    EXPECT_DEATH(Quaternion::fromMatrix(
                     Matrix4::scaling(Vector3{2.0f}).rotationScaling()),
        "Math::Quaternion::fromMatrix\\(\\): ");
}
#endif

}
