#include "LedgerUI/Presentation/Accounts/SetupChecklist.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Step = SetupChecklist::Step;

Step step(const std::string& name, PageLink link, bool isDone, std::string_view locale)
{
    const auto text = [&](const char* part) { return wordIn(locale, accountWords(), name + part); };
    return {.title = text(".title"),
            .sentence = text(".body"),
            .button = text(".go"),
            .link = std::move(link),
            .state = isDone ? Step::State::done : Step::State::due};
}

}

const SetupChecklist::Step* SetupChecklist::next() const
{
    const auto due = std::ranges::find(steps, Step::State::due, &Step::state);
    return due == steps.end() ? nullptr : &*due;
}

std::optional<SetupChecklist> setupChecklist(const AccountBook& book, std::string_view locale)
{
    const auto& snapshot = book.snapshot();
    if (!MemberRights::canManage(snapshot.currentMember))
        return std::nullopt;
    const auto& settings = snapshot.financialSettings;
    const bool hasAccounts = std::ranges::any_of(snapshot.accounts, [](const auto& each) { return !each.archived; });
    const bool hasCategories =
        std::ranges::any_of(snapshot.categories, [](const auto& each) { return !each.archived; });
    SetupChecklist list;
    list.steps = {step("setup.startDate", {.page = WorkspacePage::company, .action = PageAction::setStartDate},
                       settings && settings->bookkeepingStartDate, locale),
                  step("setup.accounts", {.page = WorkspacePage::accounts, .action = PageAction::newAccount},
                       hasAccounts, locale),
                  step("setup.categories", {.page = WorkspacePage::company, .action = PageAction::showCategories},
                       hasCategories, locale),
                  step("setup.openings", {.page = WorkspacePage::accounts, .action = PageAction::openingBalance},
                       hasAccounts && openingsDue(book).empty(), locale)};
    if (!hasAccounts)
        list.steps.back().whyNot = wordIn(locale, accountWords(), "setup.openings.later");
    const auto done = std::ranges::count(list.steps, Step::State::done, &Step::state);
    list.progress =
        wordIn(locale, accountWords(), "setup.progress", {std::to_string(done), std::to_string(list.steps.size())});
    return list.next() ? std::optional{std::move(list)} : std::nullopt;
}

std::vector<const AccountBook::Line*> openingsDue(const AccountBook& book)
{
    std::vector<const AccountBook::Line*> due;
    if (!OpeningBalancePolicy::areWanted(book.snapshot()))
        return due;
    for (const auto& line : book.lines()) {
        if (!OpeningBalancePolicy::whyNot(book.snapshot(), line.eligibility))
            due.push_back(&line);
    }
    return due;
}
