#include <gtest/gtest.h>

#include "shell/WindowStates.h"

namespace tavlo {
namespace {

TEST(MainWindowPlace, WhatExitWritesStartRestores) {
    struct Case {
        MainWindowPlace atExit;
        int width, height;  // what the start takes; 0: the window keeps its size
    };
    const Case cases[] = {
        {{30, 40, 900, 600, 0}, 900, 600},
        {{-5, 10, 800, 500, 2}, 800, 500},
        {{0, 0, 200, 600, 1}, 0, 0},  // too narrow to be a real size
        {{0, 0, 900, 150, 0}, 0, 0},  // too low
    };
    for (const Case& c : cases) {
        const auto rows = ExitWindowStates(c.atExit);
        ASSERT_EQ(rows.size(), WindowStateNames().size());
        const auto place = RestoredMainWindow(rows);
        ASSERT_TRUE(place);
        EXPECT_EQ(std::tie(place->left, place->top, place->state), std::tie(c.atExit.left, c.atExit.top, c.atExit.state));
        EXPECT_EQ(std::tie(place->width, place->height), std::tie(c.width, c.height));
    }
    // A window with a row of its own gives it; the others keep the defaults.
    const auto rows = ExitWindowStates({}, {{"GlobalForm", 5, 6, 0, true, -1, "Stage"}});
    for (const auto& row : rows)
        EXPECT_EQ(row.LoadedName, row.Window == "PresetComparatorForm" ? "-100"
                                  : row.Window == "GlobalForm"         ? "Stage"
                                                                       : "")
            << row.Window;
    EXPECT_EQ(FindWindowState(rows, "GlobalForm")->Left, 5);
}

TEST(MainWindowPlace, NothingWithoutBothRows) {
    auto rows = ExitWindowStates({30, 40, 900, 600, 0});
    std::erase_if(rows, [](const WindowStateRow& r) { return r.Window == "MAIN2"; });
    EXPECT_FALSE(RestoredMainWindow(rows));
    EXPECT_FALSE(RestoredMainWindow({}));
}

}  // namespace
}  // namespace tavlo
