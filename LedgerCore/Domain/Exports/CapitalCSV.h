#pragma once

#include <string>
#include <string_view>

struct CapitalState;

/// The owners' capital as a comma-separated document.
namespace CapitalCSV {

/// One record per contribution (a reversing one is a "correction"), per line of a baseline and per line of an
/// ownership version.
std::string render(const CapitalState& state);

/// "tallyfold-capital-2026-11-20.csv"
std::string fileName(std::string_view day);

}
