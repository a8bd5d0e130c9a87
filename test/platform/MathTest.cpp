#include <Magnum/Magnum.h>
#include <Magnum/Math/Algorithms/GramSchmidt.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>

#include "vectors.h"

namespace {

using namespace Orrelin;
using namespace Magnum;
using namespace Magnum::Math::Literals;

Matrix4 matrix(const rapidjson::Value& columns) {
    Matrix4 out;
    for(std::size_t i = 0; i != 16; ++i)
        out[i / 4][i % 4] = columns[rapidjson::SizeType(i)].GetFloat();
    return out;
}

Vector3 vector(const rapidjson::Value& value) {
    return {value[0].GetFloat(), value[1].GetFloat(), value[2].GetFloat()};
}

TEST(Math, decompose) {
    for(const rapidjson::Value& i: vectors("decompose").GetArray()) {
        SCOPED_TRACE(i["name"].GetString());
        const Matrix4 transformation = matrix(i["matrixColumns"]);

        Matrix3x3 rotation = transformation.rotationScaling();
        Vector3 scaling;
        for(std::size_t j = 0; j != 3; ++j) {
            scaling[j] = rotation[j].length();
            rotation[j] /= scaling[j];
        }
        Math::Algorithms::gramSchmidtOrthonormalizeInPlace(rotation);
        if(rotation.determinant() < 0.0f) {
            rotation[0] *= -1.0f;
            scaling[0] *= -1.0f;
        }

        EXPECT_TRUE(transformation.translation() == vector(i["translation"]));
        EXPECT_TRUE(scaling == vector(i["scaling"]));
        const Quaternion quaternion = Quaternion::fromMatrix(rotation);
        EXPECT_TRUE(quaternion ==
            Quaternion(vector(i["rotation"]), i["rotation"][3].GetFloat()));
        EXPECT_TRUE(quaternion.toMatrix() == rotation);
    }
}

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
