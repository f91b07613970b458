#include "LedgerCore/Domain/Csv/CsvReader.h"

#include <gtest/gtest.h>

namespace {

/// Fields in brackets, records on lines; "fault" where reading broke off.
std::string dump(std::string_view text)
{
    CsvReader reader{text};
    std::string dumped;
    auto outcome = reader.next();
    for (; outcome == CsvReader::Outcome::record; outcome = reader.next()) {
        for (const auto field : reader.fields())
            dumped += "[" + std::string{field} + "]";
        dumped += "\n";
    }
    return outcome == CsvReader::Outcome::fault ? dumped + "fault" : dumped;
}

struct ReadCase {
    const char* name;
    std::string_view text;
    const char* expected;
};

class CsvReaderText : public testing::TestWithParam<ReadCase> {};

TEST_P(CsvReaderText, IsSplitStrictly)
{
    EXPECT_EQ(dump(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CsvReaderText,
    testing::Values(ReadCase{"Nothing", "", ""}, ReadCase{"OnlyAMark", "\xEF\xBB\xBF", ""},
                    ReadCase{"Plain", "a,b\r\nc,d\r\n", "[a][b]\n[c][d]\n"},
                    ReadCase{"NoFinalLineEnd", "a,b\nc,d", "[a][b]\n[c][d]\n"},
                    ReadCase{"LoneCarriageReturns", "a\rb\r", "[a]\n[b]\n"},
                    ReadCase{"EmptyFields", ",\r\n\"\",\r\n", "[][]\n[][]\n"},
                    ReadCase{"MarkBeforeQuote", "\xEF\xBB\xBF\"a\",b\n", "[a][b]\n"},
                    ReadCase{"QuotedSeparators", "\"a,b\",\"c\r\nd\"\n", "[a,b][c\r\nd]\n"},
                    ReadCase{"DoubledQuotes", "\"say \"\"hi\"\"\",\"\"\"\"\n", "[say \"hi\"][\"]\n"},
                    ReadCase{"TwoDoubledFields", "\"\"\"a\"\"\",\"\"\"b\"\"\"", "[\"a\"][\"b\"]\n"},
                    ReadCase{"BlanksAreData", " a , b \n", "[ a ][ b ]\n"},
                    ReadCase{"EmptyLineInside", "a\n\nb\n", "[a]\n[]\n[b]\n"},
                    ReadCase{"EmptyLinesAtTheEnd", "a\r\n\r\n\n", "[a]\n"},
                    ReadCase{"QuotedEmptyLastLine", "a\n\"\"\n", "[a]\n[]\n"},
                    ReadCase{"QuoteInsidePlain", "a\nb\"c\n", "[a]\nfault"},
                    ReadCase{"QuoteAfterBlank", " \"a\"\n", "fault"}, ReadCase{"TextAfterQuote", "\"a\"b\n", "fault"},
                    ReadCase{"QuoteLeftOpen", "a\n\"b\nc\n", "[a]\nfault"},
                    ReadCase{"DoubledQuoteLeftOpen", "\"b\"\"", "fault"}),
    [](const auto& each) { return std::string{each.param.name}; });

}
