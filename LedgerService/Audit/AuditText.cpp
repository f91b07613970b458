#include "LedgerService/Audit/AuditText.h"

#include <boost/describe.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerService {

// What stood before and after is JSON already, and the chain may be left out.
BOOST_DESCRIBE_STRUCT(AuditRecord, (), (number, at, memberID, origin, kind, record, digest))

std::string AuditText::of(const AuditRecord& record)
{
    auto text = Json::encode(record);
    text.pop_back(); // its closing brace
    if (record.before)
        text += R"(,"before":)" + *record.before;
    if (record.after)
        text += R"(,"after":)" + *record.after;
    if (!record.chain.empty())
        text += fmt::format(R"(,"chain":"{}")", record.chain);
    return text + "}";
}

std::string AuditText::of(const AuditPage& page)
{
    std::string text = R"({"records":[)";
    for (const auto& each : page.records) {
        text += text.back() == '[' ? "" : ",";
        text += of(each);
    }
    return text + (page.next > 0 ? fmt::format(R"(],"next":{}}})", page.next) : "]}");
}

}
