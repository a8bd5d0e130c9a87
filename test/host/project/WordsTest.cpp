#include <gtest/gtest.h>

#include "project/words.h"

namespace OrrelinEngine { namespace Host { namespace {

TEST(WordsTest, languages) {
    const struct {
        const char* text;
        std::size_t count;
    } rows[]{
        {"", 0},
        {" \n – … !", 0},
        {"Don't open until 10:30", 5},
        {"Größe: 1.234,5 m²", 3},
        {"L'heure d'été", 2},
        {"¿Cómo está?", 2},
        {"Добро пожаловать", 2},
        {"Καλώς ήρθατε", 2},
        {"مرحبا بكم", 2},
        {"नमस्ते दुनिया", 2},
        {"博物館", 3},
        {"トイレ 階段", 3},
        {"환영합니다 여러분", 2},
        {"{{count}} x 👍🏽", 2},
    };
    for(const auto& row: rows)
        EXPECT_EQ(wordCount(row.text), row.count) << row.text;
}

}}}
