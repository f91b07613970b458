#include <set>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "LedgerCore/Domain/Csv/CsvReader.h"
#include "LedgerCore/Domain/Exports/LedgerCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Records = std::vector<std::vector<std::string>>;

/// Reads fully quoted text letter by letter, knowing nothing of the product's reader.
Records independentlyRead(const std::string& text)
{
    Records records{{}};
    bool quoted = false;
    for (std::size_t at = 3; at < text.size(); ++at) { // behind the byte-order mark
        const bool pair = quoted && text[at] == '"' && at + 1 < text.size() && text[at + 1] == '"';
        if (pair)
            records.back().back() += text[++at];
        else if (quoted && text[at] == '"')
            quoted = false;
        else if (quoted)
            records.back().back() += text[at];
        else if (text[at] == '"') {
            quoted = true;
            records.back().emplace_back();
        } else if (text[at] == '\n' && at + 1 < text.size())
            records.emplace_back();
    }
    return records;
}

Records readStrictly(std::string_view text)
{
    Records records;
    CsvReader reader{text};
    auto outcome = reader.next();
    for (; outcome == CsvReader::Outcome::record; outcome = reader.next())
        records.emplace_back(reader.fields().begin(), reader.fields().end());
    RC_ASSERT(outcome == CsvReader::Outcome::end);
    return records;
}

/// Text out of the pieces that quoting and formulas trip over.
rc::Gen<std::string> trickyText()
{
    const auto piece = rc::gen::element<std::string>("\"", ",", "\r", "\n", "=", "-", "'", " ", ";", "a", "đ", "期",
                                                     "\t", "\xEF\xBB\xBF");
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string>& pieces) {
                            std::string text;
                            for (const auto& each : pieces)
                                text += each;
                            return text;
                        });
}

LedgerSnapshot trickyBooks()
{
    auto built = snapshot().account("a", {"USD", "JPY"}).category("c", "income", "Sales").build();
    built.accounts[0].name = *trickyText();
    built.members[0].name = *trickyText();
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
        auto& entry = built.transactions.emplace_back();
        entry.id = *trickyText();
        entry.note = *trickyText();
        entry.memberID = built.members[0].id;
        entry.externalReference = *trickyText();
        entry.legs = {{"a", "USD", *rc::gen::arbitrary<std::int64_t>()},
                      {"a", "JPY", *rc::gen::arbitrary<std::int64_t>()}};
    }
    return built;
}

/// Only what a spreadsheet would take for a formula is written behind an apostrophe.
void expectField(const std::string& field, const std::string& value)
{
    const auto first = value.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    const bool isFormula =
        first != std::string::npos && std::string_view{"=+-@"}.find(value[first]) != std::string::npos;
    RC_ASSERT(field == (isFormula ? "'" + value : value));
}

}

TEST(CsvProperties, AnExportReadElsewhereGivesItsFieldsBack)
{
    EXPECT_TRUE(rc::check([] {
        const auto books = trickyBooks();
        const auto text = LedgerCSV::render(books, "en", {.includesReceiptIndex = true});
        const auto records = independentlyRead(text);
        RC_ASSERT(records == readStrictly(text));
        RC_ASSERT(records.size() == 1 + 2 * books.transactions.size());
        for (std::size_t at = 1; at < records.size(); ++at) {
            const auto& entry = books.transactions[(at - 1) / 2];
            RC_ASSERT(records[at].size() == 22);
            expectField(records[at][0], entry.id);
            expectField(records[at][3], books.accounts[0].name);
            expectField(records[at][6], std::to_string(entry.legs[(at - 1) % 2].amountMinor));
            expectField(records[at][8], books.members[0].name);
            expectField(records[at][9], entry.note);
            expectField(records[at][13], *entry.externalReference);
        }
    }));
}

TEST(CsvProperties, NoFieldOfAnExportIsAFormula)
{
    EXPECT_TRUE(rc::check([] {
        const auto books = trickyBooks();
        for (const auto& record : independentlyRead(LedgerCSV::render(books, "en", {}))) {
            for (const auto& field : record) {
                const auto first = field.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
                const bool harmless = first == std::string::npos || (field[first] != '=' && field[first] != '-');
                RC_ASSERT(harmless);
            }
        }
    }));
}

TEST(CsvProperties, PlanningAFileAgainGivesTheSameIdentifiersAllDifferent)
{
    EXPECT_TRUE(rc::check([] {
        const auto books = snapshot().account("Bank", {"USD"}).category("c", "income", "Sales").grantAll().build();
        auto file = LedgerImportCSV::templateText();
        const auto amounts = *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 4)); // many rows read the same
        for (const auto amount : amounts)
            file += "2026-01-05,Income,Bank,USD," + std::to_string(amount) + ",Sales,,,,\n";
        const auto plan = LedgerImportCSV::plan(file, books);
        RC_ASSERT(plan.inputs.size() == amounts.size());
        RC_ASSERT(plan == LedgerImportCSV::plan(file, books));
        std::set<std::string> keys;
        for (const auto& input : plan.inputs)
            keys.insert(input.idempotencyKey);
        RC_ASSERT(keys.size() == amounts.size());
    }));
}
