#pragma once

#include <string>
#include <string_view>

struct CapitalState;

/// The owners' capital as a comma-separated document.
namespace CapitalCSV {

/// One record a contribution (a reversing one is a "correction"), a baseline's line and an ownership version's line.
std::string render(const CapitalState& state);

/// "tallyfold-capital-2026-11-20.csv"
std::string fileName(std::string_view day);

}
