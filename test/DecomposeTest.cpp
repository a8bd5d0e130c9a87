#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>
#include <gtest/gtest.h>
#include <Magnum/Math/Algorithms/GramSchmidt.h>
#include <Magnum/Math/Matrix4.h>

#include "ChangeManager.h"
#include "Random.h"
#include "editor/ProjectFile.h"
#include "vectors.h"

namespace OrrelinEngine { namespace {

typedef Magnum::Math::Matrix4<float> Matrix4;

struct Parts {
    std::vector<double> translation, rotation, scaling;
};

std::vector<double> numbers(const rapidjson::Value& value) {
    std::vector<double> out;
    for(const auto& number: value.GetArray())
        out.push_back(number.GetDouble());
    return out;
}

/* As they get into a document */
Parts decomposed(const Matrix4& matrix) {
    ProjectFile project;
    ChangeManager manager{project};
    manager.pushTransformChange("/t", matrix, false);
    const JsonValue& parts = project.document["t"];
    return {numbers(parts["translation"]), numbers(parts["rotation"]),
        numbers(parts["scaling"])};
}

double length(const std::vector<double>& vector) {
    double out = 0.0;
    for(const double i: vector)
        out += i * i;
    return std::sqrt(out);
}

Matrix4 matrix(const float (&columns)[9]) {
    Matrix4 out;
    for(std::size_t i = 0; i != 9; ++i)
        out[i / 3][i % 3] = columns[i];
    return out;
}

TEST(DecomposeTest, vectors) {
    for(const auto& i: vectors("decompose").GetArray()) {
        SCOPED_TRACE(i["name"].GetString());
        Matrix4 in;
        for(std::size_t j = 0; j != 16; ++j)
            in[j / 4][j % 4] = i["matrixColumns"][unsigned(j)].GetFloat();
        const Parts parts = decomposed(in);
        EXPECT_EQ(parts.translation, numbers(i["translation"]));
        for(std::size_t j = 0; j != 4; ++j)
            EXPECT_NEAR(parts.rotation[j],
                i["rotation"][unsigned(j)].GetDouble(), 5e-7);
        for(std::size_t j = 0; j != 3; ++j) {
            const double scaling = i["scaling"][unsigned(j)].GetDouble();
            EXPECT_NEAR(parts.scaling[j], scaling,
                5e-7 * std::max(1.0, std::abs(scaling)));
        }
    }
}

constexpr float Half = 0.70710678f;
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

/* All turn about z or not at all */
TEST(DecomposeTest, degenerate) {
    const struct {
        const char* name;
        float columns[9];
        float scalar;
    } cases[]{
        {"quarter turn without x", {0, 0, 0, -3, 0, 0, 0, 0, 4}, Half},
        {"quarter turn without y", {0, 2, 0, 0, 0, 0, 0, 0, 4}, Half},
        {"quarter turn without z", {0, 2, 0, -3, 0, 0, 0, 0, 0}, Half},
        {"nothing", {}, 1},
        {"axes in a plane", {1, 0, 0, 0, 1, 0, 1, 1, 0}, 1},
        {"tiny", {1.0e-45f, 0, 0, 0, 1.0e-40f, 0, 0, 0, 1.0e-38f}, 1},
        {"huge", {3.0e38f, 0, 0, 0, 3.0e38f, 0, 0, 0, 3.0e38f}, 1},
        {"of all sizes", {1.0e-40f, 0, 0, 0, 3.0e38f, 0, 0, 0, 1}, 1},
        {"not a number", {NaN, 0, 0, 0, 1, 0, 0, 0, 1}, 1},
        {"infinite", {Infinity, 0, 0, 0, 1, 0, 0, 0, 1}, 1},
    };
    for(const auto& i: cases) {
        SCOPED_TRACE(i.name);
        const Parts parts = decomposed(matrix(i.columns));
        EXPECT_NEAR(length(parts.rotation), 1.0, 1.0e-6);
        EXPECT_NEAR(
            parts.rotation[2], std::sqrt(1 - i.scalar * i.scalar), 1.0e-6);
        EXPECT_NEAR(parts.rotation[3], i.scalar, 1.0e-6);
        for(int j = 0; j != 3; ++j) {
            const float* const column = i.columns + 3 * j;
            const double size = length({column, column + 3});
            if(std::isfinite(size)) {
                EXPECT_FLOAT_EQ(std::abs(parts.scaling[j]), size);
            }
        }
    }
}

/* Whatever the matrix, the rotation is one */
TEST(DecomposeTest, any) {
    typedef Magnum::Math::Matrix3x3<double> Axes;
    Random random{1};
    const auto orthonormal = [&random] {
        Axes out;
        for(int i = 0; i != 9; ++i)
            out[i / 3][i % 3] = double(random.below(2001)) - 1000.0;
        Magnum::Math::Algorithms::gramSchmidtOrthonormalizeInPlace(out);
        return out;
    };
    for(int i = 0; i != 20000; ++i) {
        const double least = std::pow(10.0, -0.5 * (i % 20));
        Axes axes = orthonormal();
        axes[1] *= i % 3 ? least : 1.0;
        axes[2] *= least;
        axes = axes * orthonormal();
        Matrix4 in;
        for(int j = 0; j != 9; ++j)
            in[j / 3][j % 3] =
                std::ldexp(float(axes[j / 3][j % 3]), i % 201 - 100);
        ASSERT_NEAR(length(decomposed(in).rotation), 1.0, 1.0e-6) << i;
    }
}

}}
