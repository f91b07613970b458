#include <cstddef>
#include <cstdint>
#include <string>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"

/// Whatever the bytes, a snapshot that was read is the same when written and read again, and reports read it too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string text{reinterpret_cast<const char*>(data), size};
    const auto snapshot = Json::decode<LedgerSnapshot>(text);
    const auto source = Json::view<ReportSource>(text);
    require(source.has_value() == snapshot.has_value(), "reports refuse what the whole refuses");
    if (!snapshot)
        return 0;
    const auto again = Json::decode<LedgerSnapshot>(Json::encode(*snapshot));
    require(source->transactions.size() == snapshot->transactions.size(), "reports read it");
    require(again.has_value(), "what was written can be read");
    require(*again == *snapshot, "a snapshot survives being written");
    return 0;
}
