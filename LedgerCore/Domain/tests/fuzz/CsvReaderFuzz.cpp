#include <cstddef>
#include <cstdint>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Csv/CsvReader.h"
#include "LedgerCore/Domain/Exports/LedgerCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Records = std::vector<std::vector<std::string>>;

/// The records up to the end or the fault.
std::pair<Records, CsvReader::Outcome> read(std::string_view text)
{
    Records records;
    CsvReader reader{text};
    auto outcome = reader.next();
    for (; outcome == CsvReader::Outcome::record; outcome = reader.next())
        records.emplace_back(reader.fields().begin(), reader.fields().end());
    return {std::move(records), outcome};
}

std::string written(const Records& records)
{
    std::string text;
    for (const auto& record : records) {
        const char* separator = "";
        for (const auto& field : record) {
            text += separator;
            text += '"';
            for (const char each : field)
                text += each == '"' ? std::string{"\"\""} : std::string{each};
            text += '"';
            separator = ",";
        }
        text += "\n";
    }
    return text;
}

}

/// Whatever the bytes, what was read can be written and read again, and a plan is the same twice.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto [records, outcome] = read(text);
    require(outcome != CsvReader::Outcome::record, "reading ends");
    require(read(written(records)).first == records, "records survive being written");

    static const auto books = snapshot().account("Bank", {"USD"}).category("c", "income", "Sales").grantAll().build();
    static const auto header = LedgerImportCSV::templateText();
    const auto plan = LedgerImportCSV::plan(header + std::string{text}, books);
    require(!plan.malformed || plan.inputs.empty(), "a file that cannot be read records nothing");
    require(plan == LedgerImportCSV::plan(header + std::string{text}, books), "a plan is the same twice");
    return 0;
}
