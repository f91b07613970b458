#pragma once

#include <string>
#include <string_view>

struct DividendState;

/// The dividends as a comma-separated document.
namespace DividendCSV {

/// One record per line of an allocation ("entitlement"), then one per movement. None of the fields is worded by the
/// interface so far, so that the document reads the same in every `locale`.
std::string render(const DividendState& state, std::string_view locale);

/// "tallyfold-dividends-2026-11-20.csv"
std::string fileName(std::string_view day);

}
