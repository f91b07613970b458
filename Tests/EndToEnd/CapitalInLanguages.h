#pragma once

#include <string>

struct Stage;

/// On the page of capital and dividends of a company with owners, participants and an account in US dollars: everything
/// that is done with money there, by keys alone, in this language and its separators.
void liveACapitalYearIn(Stage& stage, const std::string& language);
