#include "foundation/platform/DynamicLibrary.h"
#include "tests/support/Message.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrin {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using tests::messageOf;

TEST(DynamicLibrary, FindsFunctions) {
    const platform::DynamicLibrary library(Path(String("libm.so.6")));
    const auto cosine = reinterpret_cast<double (*)(double)>(library.getSymbol("cos"));
    EXPECT_EQ(cosine(0.0), 1.0);
    EXPECT_THAT(messageOf([&] { library.getSymbol("no_such_function"); }),
                AllOf(HasSubstr("libm.so.6"), HasSubstr("\"no_such_function\"")));
}

TEST(DynamicLibrary, MissingModuleIsNamedWithTheReason) {
    EXPECT_THAT(messageOf([] { platform::DynamicLibrary(Path(String("/nowhere/module.so"))); }),
                AllOf(HasSubstr("Module \"/nowhere/module.so\" cannot be loaded"),
                      HasSubstr("No such file")));
}

}  // namespace
}  // namespace tavrin
