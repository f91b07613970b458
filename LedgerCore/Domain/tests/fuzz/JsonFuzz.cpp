#include <cstddef>
#include <cstdint>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json.h"
#include "LedgerCore/Domain/LedgerSnapshot.h"

/// Whatever the bytes, a snapshot that was read is the same when written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto snapshot = Json::decode<LedgerSnapshot>({reinterpret_cast<const char*>(data), size});
    if (!snapshot)
        return 0;
    const auto again = Json::decode<LedgerSnapshot>(Json::encode(*snapshot));
    require(again.has_value(), "what was written can be read");
    require(*again == *snapshot, "a snapshot survives being written");
    return 0;
}
