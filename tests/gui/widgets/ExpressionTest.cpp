#include "gui/widgets/Expression.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tavrin::widgets {
namespace {

TEST(Expression, IsCalculatedInTheUsualOrder) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"12", 12.0},       {" 0.5 ", 0.5},  {"0,5", 0.5},     {".5", 0.5},
        {"-3", -3.0},       {"+3", 3.0},     {"2+3*4", 14.0},  {"(2+3)*4", 20.0},
        {"10-4-3", 3.0},    {"16/4/2", 2.0}, {"2*-3", -6.0},   {"-(1+2)*2", -6.0},
        {"1e3 / 2", 500.0}, {"((7))", 7.0},  {"1,5+1.5", 3.0}, {"--2", 2.0},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_THAT(evaluateExpression(text), testing::Optional(testing::DoubleEq(value))) << text;
    }
}

TEST(Expression, RefusesWhatIsNoFiniteNumber) {
    const std::string deep(100000, '(');
    for (const char* text : {"", " ", "a", "1+", "*2", "(1", "1)", "1 2", "1/0", "0/0", "inf",
                             "nan", "1e400", "1..2", "0x10", "1;2", "\xC2\xB5", deep.c_str()}) {
        EXPECT_FALSE(evaluateExpression(text)) << std::string(text).substr(0, 20);
    }
}

}  // namespace
}  // namespace tavrin::widgets
