#pragma once

#include <map>
#include <optional>
#include <variant>

#include <QObject>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Records/CapitalCommand.h"
#include "LedgerCore/Domain/Records/DividendCommand.h"

class LedgerStore;

/// A command on capital or dividends of which nobody knows whether it was carried out: only the same may be sent again.
using SectionCommand = std::variant<CapitalCommand, DividendCommand>;

/// The last such command of each member. It outlives sessions; without it the person would type it again, and the
/// service would take it twice.
class UnconfirmedCommands final : public QObject {
    Q_OBJECT
public:
    /// Those of a store, for as long as it is there.
    static UnconfirmedCommands& of(LedgerStore& store);

    /// Of the signed-in member in the open company.
    [[nodiscard]] std::optional<SectionCommand> kept() const;
    void keep(SectionCommand command);
    /// It is confirmed or refused, or the person gave it up.
    void forget();
    [[nodiscard]] bool hasAny() const { return !m_commands.empty(); }

private:
    explicit UnconfirmedCommands(LedgerStore& store);
    [[nodiscard]] std::optional<MemberIdentity> signedIn() const;

    LedgerStore& m_store;
    std::map<MemberIdentity, SectionCommand> m_commands;
};
