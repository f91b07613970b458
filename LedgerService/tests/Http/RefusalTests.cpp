#include <fstream>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "LedgerService/Refusal.h"

using namespace LedgerService;

namespace {

/// Rows of docs/protocol.md such as "| 409, capital | `capital_integrity`, … |".
const std::regex statusRow{R"(\| (\d{3})[^|]*\|(.*)\|)"};
const std::regex codeInRow{R"(`([A-Za-z]+(?:_[A-Za-z]+)*)`)"};

}

TEST(Refusal, GivesEachCodeTheStatusThatTheProtocolNames)
{
    std::ifstream protocol{TALLYFOLD_PROTOCOL};
    std::string line;
    int codes = 0;
    while (std::getline(protocol, line)) {
        std::smatch row;
        if (!std::regex_match(line, row, statusRow))
            continue;
        const std::string cell = row[2];
        for (std::sregex_iterator each{cell.begin(), cell.end(), codeInRow}, none; each != none; ++each) {
            if ((*each)[1] == "Allow")
                continue;
            EXPECT_EQ(Refusal::of((*each)[1].str(), "").status, std::stoi(row[1])) << (*each)[1];
            ++codes;
        }
    }
    EXPECT_GT(codes, 60);
}
