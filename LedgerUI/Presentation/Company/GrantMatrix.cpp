#include "LedgerUI/Presentation/Company/GrantMatrix.h"

#include <algorithm>
#include <utility>

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Place = std::pair<std::size_t, std::size_t>; // row and column

std::string_view actionAt(std::size_t column)
{
    return AccountGrant::knownActions.at(column);
}

QString actionText(std::string_view action, std::string_view locale)
{
    return wordIn(locale, accessWords(), "action." + std::string{action});
}

/// Whose rights are shown, as they are saved and as they are being changed.
struct Edited {
    const Member& saved;
    const AccessDraft& before;
    const AccessDraft& draft;
    const LedgerSnapshot& snapshot;
    std::string_view locale;
};

GrantCell cellFor(const Edited& edited, const Account& account, std::string_view action)
{
    const auto& [saved, before, draft, snapshot, locale] = edited;
    GrantCell cell{.isGranted = draft.grantsAction(action, account.id),
                   .isMeaningful = MemberAccess::isMeaningful(action, account)};
    // What was changed here can always be changed back.
    const bool isChanged = cell.isGranted != before.grantsAction(action, account.id);
    if (!cell.isGranted && !cell.isMeaningful)
        cell.whyNot = wordIn(locale, accessWords(), "meaningless");
    else if (const auto refusal = MemberAccess::whyNotAction(saved, account.id, action, snapshot);
             refusal && !isChanged)
        cell.whyNot = MemberAccess::refusalText(*refusal, locale);
    const auto said = wordIn(locale, accessWords(), cell.isGranted ? "granted" : "notGranted",
                             {account.name, actionText(action, locale).toStdString()});
    cell.spoken = listed({said, cell.whyNot}, locale);
    return cell;
}

AccessDraft toggledAt(AccessDraft draft, const std::vector<GrantRow>& rows, const std::vector<Place>& places)
{
    const auto at = [&](const Place& place) -> const GrantCell& { return rows[place.first].cells[place.second]; };
    const auto gives =
        std::ranges::any_of(places, [&](const Place& place) { return at(place).mayChange() && !at(place).isGranted; });
    for (const auto& place : places) {
        if (at(place).mayChange() && at(place).isGranted != gives)
            draft =
                MemberAccess::withAction(std::move(draft), rows[place.first].accountID, actionAt(place.second), gives);
    }
    return draft;
}

}

std::vector<QString> GrantMatrix::heads(std::string_view locale)
{
    std::vector<QString> texts;
    texts.reserve(AccountGrant::knownActions.size());
    for (const auto action : AccountGrant::knownActions)
        texts.push_back(actionText(action, locale));
    return texts;
}

std::vector<GrantRow> GrantMatrix::rows(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot,
                                        std::string_view locale)
{
    const auto before = MemberAccess::draftOf(saved);
    const Edited edited{saved, before, draft, snapshot, locale};
    std::vector<GrantRow> rows;
    for (const auto& account : snapshot.accounts) {
        if (account.archived && !draft.grants.contains(account.id))
            continue;
        GrantRow row{.accountID = account.id, .account = qString(account.name), .cells = {}};
        for (const auto action : AccountGrant::knownActions)
            row.cells.push_back(cellFor(edited, account, action));
        rows.push_back(std::move(row));
    }
    return rows;
}

AccessDraft GrantMatrix::toggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t row,
                                 std::size_t column)
{
    return toggledAt(draft, rows, {{row, column}});
}

AccessDraft GrantMatrix::rowToggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t row)
{
    std::vector<Place> places;
    places.reserve(rows[row].cells.size());
    for (std::size_t column = 0; column < rows[row].cells.size(); ++column)
        places.emplace_back(row, column);
    return toggledAt(draft, rows, places);
}

AccessDraft GrantMatrix::columnToggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t column)
{
    std::vector<Place> places;
    places.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        places.emplace_back(row, column);
    return toggledAt(draft, rows, places);
}
