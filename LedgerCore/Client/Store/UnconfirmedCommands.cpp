#include "LedgerCore/Client/Store/UnconfirmedCommands.h"

#include <utility>

#include "LedgerCore/Client/Store/LedgerStore.h"

UnconfirmedCommands& UnconfirmedCommands::of(LedgerStore& store)
{
    auto* known = store.findChild<UnconfirmedCommands*>({}, Qt::FindDirectChildrenOnly);
    return known ? *known : *new UnconfirmedCommands(store); // the store is its parent
}

UnconfirmedCommands::UnconfirmedCommands(LedgerStore& store) : QObject{&store}, m_store{store} {}

std::optional<MemberIdentity> UnconfirmedCommands::signedIn() const
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return std::nullopt;
    return MemberIdentity{
        .endpoint = m_store.serverURL(), .companyID = snapshot->company.id, .memberID = snapshot->currentMember.id};
}

std::optional<SectionCommand> UnconfirmedCommands::kept() const
{
    const auto member = signedIn();
    const auto found = member ? m_commands.find(*member) : m_commands.end();
    return found == m_commands.end() ? std::nullopt : std::optional{found->second};
}

void UnconfirmedCommands::keep(SectionCommand command)
{
    if (const auto member = signedIn())
        m_commands.insert_or_assign(*member, std::move(command));
}

void UnconfirmedCommands::forget()
{
    if (const auto member = signedIn())
        m_commands.erase(*member);
}
