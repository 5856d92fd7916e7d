#include "gui/windows/WindowTitle.h"

#include <gtest/gtest.h>

namespace tavrin::windows {
namespace {

TEST(WindowTitle, TellsFilesSizeAndZoom) {
    const Path a(String("/r/a.txr"));
    const struct {
        WindowState state;
        const char* rest;
    } cases[] = {
        // Loading, saving, loaded, modified.
        {{false, false, false, false, {}, {}, 0}, ""},
        {{true, false, false, false, {}, {}, 0}, " (loading ...)"},
        {{true, true, true, false, {a}, {}, 0}, " (loading ..., saving ...)"},
        {{false, false, true, false, {a}, {1920, 1080}, 0}, " (/r/a.txr, 1920x1080px, 1:1)"},
        {{false, false, true, true, {a, a, a}, {1, 1}, 3}, " (*/r/a.txr [and 2 more], 1x1px, 8:1)"},
        {{false, false, true, false, {a}, {0, 5}, 0}, " (/r/a.txr)"},
        {{false, true, true, true, {a}, {4, 3}, -5}, " (saving ..., 4x3px, 1:32)"},
    };
    for (const auto& each : cases) {
        const std::string title = composeTitle(each.state).toUtf8();
        const std::string start = "Tavrin Image Editor " TAVRIN_VERSION;
        EXPECT_EQ(title, start + each.rest);
    }
}

}  // namespace
}  // namespace tavrin::windows
