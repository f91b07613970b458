#include "LedgerService/Access/EntryDisclosure.h"

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerService/Storage/Sql/JsonColumn.h"

namespace LedgerService {

namespace {

// Within a text of the JSON the quotation mark would be escaped.
constexpr std::string_view ofCapital = R"(capitalContributionID":)";
constexpr std::string_view ofDividends = R"(dividendMovementID":)";

}

EntryDisclosure::EntryDisclosure(const Member& reader)
    : m_showsCapital(MemberRights::canSeeCapital(reader)), m_showsDividends(MemberRights::canSeeDividends(reader))
{
}

bool EntryDisclosure::hidesOf(bool isOfCapital, bool isOfDividends) const
{
    return (isOfCapital && !m_showsCapital) || (isOfDividends && !m_showsDividends);
}

std::optional<std::string> EntryDisclosure::instead(std::string_view text) const
{
    // Most see both sections, and it is asked of every entry of the books.
    const bool isHidden =
        (!m_showsCapital && text.contains(ofCapital)) || (!m_showsDividends && text.contains(ofDividends));
    if (!isHidden)
        return std::nullopt;
    auto entry = JsonColumn::read<LedgerTransaction>(std::string{text});
    entry.note.clear();
    entry.participantName.reset();
    entry.capitalContributionID.reset();
    entry.dividendMovementID.reset();
    entry.distributionKind.reset();
    return Json::encode(entry);
}

}
