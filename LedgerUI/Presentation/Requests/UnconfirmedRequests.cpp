#include "LedgerUI/Presentation/Requests/UnconfirmedRequests.h"

#include <algorithm>

#include <QStringList>

#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Records/CommandForms.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// The name of the participant that a command is about: the one that it gives, else the one in the books.
template <class Command, class State>
std::string participantOf(const Command& command, const std::optional<State>& state)
{
    if (command.name)
        return *command.name;
    if (!command.participantID || !state)
        return {};
    const auto found =
        std::ranges::find_if(state->participants, [&](const auto& each) { return each.id == *command.participantID; });
    return found == state->participants.end() ? std::string{} : found->name;
}

class Rows {
public:
    Rows(const LedgerSnapshot& snapshot, std::string_view locale)
        : m_snapshot{snapshot}, m_locale{locale}, m_names{snapshot, std::string{locale}}
    {
    }

    [[nodiscard]] UnconfirmedRequest entry(const KeptEntry& kept) const
    {
        const auto& input = kept.input;
        QStringList parts{wordIn(m_locale, ledgerWords(), "kind." + input.kind)};
        if (input.categoryID)
            parts << qString(m_names.category(*input.categoryID));
        QStringList accounts;
        for (const auto& id : {input.sourceAccountID, input.targetAccountID}) {
            if (id)
                accounts << qString(m_names.account(*id));
        }
        if (!accounts.isEmpty())
            parts << accounts.join(QStringLiteral(" → "));
        if (!input.note.empty())
            parts << qString(input.note);
        return {.id = input.idempotencyKey,
                .glyph = entryKindGlyph(input.kind),
                .what = joined(parts),
                .amount = balanceText(input.amountMinor, input.currency, m_locale),
                .when = when(input.date, kept.since),
                .standing = standing(kept.outcomeUnknown)};
    }

    [[nodiscard]] UnconfirmedRequest reversal(const KeptRequests::ReversalOf& request) const
    {
        const auto& reversal = request.kept.reversal;
        const auto* original = m_snapshot.entry(request.entryID);
        auto what = original ? wordIn(m_locale, requestWords(), "reversal",
                                      {DayText::shortDate(original->date, m_locale).toStdString() + " · " +
                                       m_names.title(*original)})
                             : wordIn(m_locale, requestWords(), "reversal.entry");
        MoneyText amount;
        if (original && !original->legs.empty()) {
            const auto& leg = original->legs.front();
            amount = movementText(-leg.amountMinor, leg.currency, m_locale);
        }
        return {.id = reversal.idempotencyKey,
                .glyph = entryKindGlyph(EntryKind::reversal),
                .what = joined({what, qString(reversal.reason)}),
                .amount = amount,
                .when = when(reversal.date, request.kept.since),
                .standing = standing(request.kept.outcomeUnknown),
                .hasForm = original != nullptr};
    }

    [[nodiscard]] UnconfirmedRequest section(const KeptSectionCommand& kept) const
    {
        if (const auto* capital = std::get_if<CapitalCommand>(&kept.command))
            return of(*capital, kept, "capital.", EntryKind::capital, participantOf(*capital, m_snapshot.capital));
        const auto& dividend = std::get<DividendCommand>(kept.command);
        return of(dividend, kept, "dividend.", EntryKind::dividend, participantOf(dividend, m_snapshot.dividends));
    }

private:
    /// One that was not carried out is not sent again as it stands where a form can look at newer records first.
    template <class Command>
    UnconfirmedRequest of(const Command& command, const KeptSectionCommand& kept, const std::string& section,
                          std::string_view glyph, const std::string& participant) const
    {
        return {.id = command.idempotencyKey,
                .glyph = entryKindGlyph(glyph),
                .what = joined({wordIn(m_locale, requestWords(), section + command.action), qString(participant),
                                qString(command.note.value_or(""))}),
                .amount = command.amountMinor && command.currency
                              ? balanceText(*command.amountMinor, *command.currency, m_locale)
                              : MoneyText{},
                .when = when(command.date, kept.since),
                .standing = standing(kept.outcomeUnknown),
                .mayRetry = kept.outcomeUnknown || !hasForm(kept.command),
                .hasForm = hasForm(kept.command)};
    }

    [[nodiscard]] QString when(std::string_view day, const std::string& since) const
    {
        return wordIn(
            m_locale, requestWords(), "when",
            {DayText::shortDate(day, m_locale).toStdString(), DayText::moment(since, m_locale).toStdString()});
    }
    [[nodiscard]] QString standing(bool outcomeUnknown) const
    {
        return wordIn(m_locale, requestWords(), outcomeUnknown ? "unknown" : "unsent");
    }
    static QString joined(QStringList parts)
    {
        parts.removeAll(QString{});
        return parts.join(QStringLiteral(" · "));
    }

    const LedgerSnapshot& m_snapshot;
    std::string_view m_locale;
    LedgerNames m_names;
};

}

std::vector<UnconfirmedRequest> UnconfirmedRequests::rows(const KeptRequests& kept, const LedgerSnapshot& snapshot,
                                                          std::string_view locale)
{
    const Rows make{snapshot, locale};
    std::vector<UnconfirmedRequest> rows;
    rows.reserve(kept.count());
    for (const auto& each : kept.entries)
        rows.push_back(make.entry(each));
    for (const auto& each : kept.reversals)
        rows.push_back(make.reversal(each));
    for (const auto& each : kept.sections)
        rows.push_back(make.section(each));
    return rows;
}
