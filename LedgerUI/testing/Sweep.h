#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "LedgerUI/testing/WindowUnderTest.h"

/// A screen of the program: its name in the list of tests, the pages that are built, and how a person comes to it.
struct SweptScreen {
    std::string name;
    PageRegistry (*pages)();
    std::function<void(WindowUnderTest&)> open;
};

inline void PrintTo(const SweptScreen& each, std::ostream* out)
{
    *out << each.name;
}

/// Every screen in every language in the smallest window: nothing is cut, every control has a name and a role, Tab
/// comes by all of them, and Return presses none that does not have the focus. Each family of screens is swept by a
/// file of its own, with SWEEP.
class Sweep : public testing::TestWithParam<std::tuple<SweptScreen, std::string>> {};

#define SWEEP(family, screens)                                                                                         \
    INSTANTIATE_TEST_SUITE_P(                                                                                          \
        family, Sweep,                                                                                                 \
        testing::Combine(testing::ValuesIn(screens), testing::Values("zh-CN", "id-ID", "vi-VN", "en-US")),             \
        [](const auto& each) { return std::get<0>(each.param).name + "_" + std::get<1>(each.param).substr(0, 2); })
