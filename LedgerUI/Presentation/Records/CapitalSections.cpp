#include "LedgerUI/Presentation/Records/CapitalSections.h"

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

template <class State>
const State* seen(const std::optional<State>& sent, bool maySee)
{
    static const State none;
    return sent ? &*sent : maySee ? &none : nullptr;
}

}

const CapitalState* CapitalSections::capital(const LedgerSnapshot& snapshot)
{
    const auto& member = snapshot.currentMember;
    return MemberRights::canOpenContributions(member) ? seen(snapshot.capital, MemberRights::canSeeCapital(member))
                                                      : nullptr;
}

const DividendState* CapitalSections::dividends(const LedgerSnapshot& snapshot)
{
    const auto& member = snapshot.currentMember;
    return MemberRights::canOpenDividends(member) ? seen(snapshot.dividends, MemberRights::canSeeDividends(member))
                                                  : nullptr;
}

bool CapitalSections::isSeen(CapitalModuleTab tab, const LedgerSnapshot& snapshot)
{
    return (tab != CapitalModuleTab::dividends && capital(snapshot)) ||
           (tab != CapitalModuleTab::contributions && dividends(snapshot));
}
