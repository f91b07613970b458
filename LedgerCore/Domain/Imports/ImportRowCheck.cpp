#include "LedgerCore/Domain/Imports/ImportRowCheck.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

struct KindWord {
    std::string_view word;
    std::string_view kind;
};

constexpr std::array kindWords{
    KindWord{"收入", EntryKind::income},
    KindWord{"income", EntryKind::income},
    KindWord{"支出", EntryKind::expense},
    KindWord{"expense", EntryKind::expense},
    KindWord{"内部划拨", EntryKind::transfer},
    KindWord{"transfer", EntryKind::transfer},
    KindWord{"换汇", EntryKind::exchange},
    KindWord{"internal transfer", EntryKind::transfer},
    KindWord{"期初余额", EntryKind::opening},
    KindWord{"exchange", EntryKind::exchange},
    KindWord{"opening", EntryKind::opening},
    KindWord{"currency exchange", EntryKind::exchange},
    KindWord{"opening balance", EntryKind::opening},
};

constexpr std::string_view amountLocale = "en-US";
constexpr std::string_view twoDecimalCurrency = "USD"; // no currency has more decimals

std::string lowerCase(std::string_view word)
{
    std::string text{word};
    std::ranges::transform(text, text.begin(), [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    });
    return text;
}

/// Currency codes are in capitals; people write "usd" as well.
std::string upperCase(std::string_view word)
{
    std::string text{word};
    std::ranges::transform(text, text.begin(), [](char each) {
        return each >= 'a' && each <= 'z' ? static_cast<char>(each - 'a' + 'A') : each;
    });
    return text;
}

/// Names are unique only as long as one record bears them.
template <class Names, class Record>
void addName(Names& names, std::string_view name, const Record& record)
{
    const auto [at, fresh] = names.try_emplace(typename Names::key_type{TextFold::trimmed(name)}, &record);
    if (!fresh && at->second != &record)
        at->second = nullptr;
}

std::string pathOf(std::string_view parent, std::string_view child)
{
    return fmt::format("{}\x1F{}", TextFold::trimmed(parent), TextFold::trimmed(child));
}

template <class Names>
auto bearerOf(const Names& names, std::string_view name) -> typename Names::mapped_type
{
    const auto at = names.find(typename Names::key_type{name});
    return at == names.end() || name.empty() ? nullptr : at->second;
}

}

ImportRowCheck::ImportRowCheck(const LedgerSnapshot& snapshot, LedgerImportPlan& plan)
    : m_snapshot(snapshot), m_plan(plan)
{
    for (const auto& each : snapshot.accounts) {
        if (snapshot.currentMember.can(AccountAction::view, each.id))
            addName(m_accounts, each.name, each);
    }
    const CategoryDirectory directory{snapshot.categories};
    for (const auto& each : snapshot.categories) {
        auto& names = each.kind == EntryKind::income ? m_incomeCategories : m_expenseCategories;
        for (const auto& [language, name] : each.names) {
            if (!each.archived)
                addName(names, name, each);
        }
        if (const auto* const parent = each.archived ? nullptr : directory.parent(each))
            addPaths(*parent, each);
    }
}

/// A child is also known behind its parent's name, both in one language.
void ImportRowCheck::addPaths(const Category& parent, const Category& child)
{
    auto& paths = child.kind == EntryKind::income ? m_incomePaths : m_expensePaths;
    for (const auto& [language, name] : child.names) {
        if (const auto above = parent.names.find(language); above != parent.names.end())
            addName(paths, pathOf(above->second, name), child);
    }
}

/// "Parent / Child" as it is typed, or "Parent › Child" as the window writes it. Names may hold a stroke themselves.
const Category* ImportRowCheck::categoryByPath(std::string_view entryKind, std::string_view path) const
{
    const auto& paths = entryKind == EntryKind::income ? m_incomePaths : m_expensePaths;
    for (const std::string_view stroke : {"/", "›"}) {
        for (auto at = path.find(stroke); at != std::string_view::npos; at = path.find(stroke, at + stroke.size())) {
            if (const auto* found = bearerOf(paths, pathOf(path.substr(0, at), path.substr(at + stroke.size()))))
                return found;
        }
    }
    return nullptr;
}

const Account* ImportRowCheck::uniqueAccount(std::string_view name) const
{
    return bearerOf(m_accounts, name);
}

const Category* ImportRowCheck::uniqueCategory(std::string_view entryKind, std::string_view name) const
{
    const auto* const named = bearerOf(entryKind == EntryKind::income ? m_incomeCategories : m_expenseCategories, name);
    return named ? named : categoryByPath(entryKind, name);
}

void ImportRowCheck::refuse(std::string_view issue, std::optional<Column> column)
{
    m_plan.issues.push_back({.line = m_line, .message = std::string{issue}});
    if (!column)
        return;
    m_plan.issues.back().value = std::string{m_cells[*column]};
    m_plan.issues.back().column = *column;
}

void ImportRowCheck::check(int line, Cells cells, std::string identifier)
{
    m_line = line;
    m_cells = cells.data();
    m_currency = upperCase(cells[currency]);
    m_targetCurrency = upperCase(cells[targetCurrency]);
    const auto issuesBefore = m_plan.issues.size();

    TransactionInput input;
    checkDate();
    const auto entryKind = checkedKind();
    const auto* source = checkedAccount();
    if (source != nullptr && !entryKind.empty())
        checkPermission(*source, entryKind);
    const auto minor = checkedAmount(amount, m_currency, "amount");
    if (entryKind == EntryKind::income || entryKind == EntryKind::expense)
        checkCategory(entryKind, input);
    if (entryKind == EntryKind::transfer)
        checkTransfer(source, input);
    else if (entryKind == EntryKind::exchange)
        checkExchange(input);
    else if (!entryKind.empty())
        checkTargetsAreEmpty();
    if (m_plan.issues.size() != issuesBefore || source == nullptr || !minor)
        return;

    input.kind = entryKind;
    input.date = cells[date];
    input.note = cells[note];
    const bool arrives = entryKind == EntryKind::income || entryKind == EntryKind::opening;
    (arrives ? input.targetAccountID : input.sourceAccountID) = source->id;
    input.currency = m_currency;
    input.amountMinor = *minor;
    input.idempotencyKey = std::move(identifier);
    m_plan.inputs.push_back(std::move(input));
    m_plan.lines.push_back(line);
}

void ImportRowCheck::checkDate()
{
    const auto day = m_cells[date];
    if (!LedgerDay::isValid(day))
        return refuse("date", date);
    const auto& settings = m_snapshot.financialSettings;
    if (settings && settings->bookkeepingStartDate && day < *settings->bookkeepingStartDate)
        refuse("beforeStart", date);
    if (day < m_previousDate)
        refuse("dateOrder", date);
    m_previousDate = day;
}

std::string_view ImportRowCheck::checkedKind()
{
    const auto word = lowerCase(m_cells[kind]);
    const auto known = std::ranges::find(kindWords, word, &KindWord::word);
    if (known != kindWords.end())
        return known->kind;
    refuse("type", kind);
    return {};
}

/// The account, once it is known for sure; its currency is checked beside it.
const Account* ImportRowCheck::checkedAccount()
{
    const auto* named = uniqueAccount(m_cells[account]);
    if (named == nullptr)
        refuse("account", account);
    if (!CurrencyInfo::isSupported(m_currency) || (named != nullptr && !named->holds(m_currency)))
        refuse("currency", currency);
    return named;
}

void ImportRowCheck::checkPermission(const Account& source, std::string_view entryKind)
{
    const auto refusal = LedgerEntryAccess::whyNotRecord(source, m_snapshot.currentMember, entryKind);
    if (refusal == LedgerEntryAccess::RecordRefusal::archived)
        refuse("account", account);
    else if (refusal)
        refuse("permission", account);
}

/// Beside an unknown currency, which is an issue of its own, a text is still found out that is no amount in any.
std::optional<std::int64_t> ImportRowCheck::checkedAmount(Column amountColumn, std::string_view currencyCode,
                                                          std::string_view issue)
{
    const auto readIn = CurrencyInfo::isSupported(currencyCode) ? currencyCode : twoDecimalCurrency;
    const auto minor = Money::parse(m_cells[amountColumn], readIn, amountLocale);
    if (minor && *minor > 0)
        return *minor;
    refuse(issue, amountColumn);
    return std::nullopt;
}

void ImportRowCheck::checkCategory(std::string_view entryKind, TransactionInput& input)
{
    if (const auto* named = uniqueCategory(entryKind, m_cells[category]))
        input.categoryID = named->id;
    else
        refuse("category", category);
}

void ImportRowCheck::checkTargetsAreEmpty()
{
    if (!m_cells[targetAccount].empty())
        refuse("targetAccount", targetAccount);
    if (!m_cells[targetCurrency].empty())
        refuse("targetCurrency", targetCurrency);
    if (!m_cells[targetAmount].empty())
        refuse("targetAmount", targetAmount);
}

const Account* ImportRowCheck::checkedTarget()
{
    const auto* named = uniqueAccount(m_cells[targetAccount]);
    if (named == nullptr || named->archived) {
        refuse("targetAccount", targetAccount);
        return nullptr;
    }
    return named;
}

void ImportRowCheck::checkTransfer(const Account* source, TransactionInput& input)
{
    using enum LedgerEntryAccess::DestinationRefusal;
    const auto* target = checkedTarget();
    if (target != nullptr && source != nullptr) {
        const auto refusal = LedgerEntryAccess::whyNotReceive(*source, *target, m_snapshot.currentMember);
        if (refusal == sameAccount)
            refuse("sameAccount", targetAccount);
        else if (refusal == notGranted)
            refuse("permission", targetAccount);
        else if (refusal)
            refuse("targetAccount", targetAccount);
        if (const auto purpose = LedgerEntryAccess::transferPurpose(*source, *target))
            input.transferPurpose = std::string{*purpose};
        input.targetAccountID = target->id;
    }
    const bool held = target == nullptr || target->holds(m_currency) ||
                      (source != nullptr && !source->holds(m_currency)); // said of the source already
    if (!held || !m_cells[targetCurrency].empty())
        refuse("targetCurrency", targetCurrency);
    if (!m_cells[targetAmount].empty())
        refuse("targetAmount", targetAmount);
}

void ImportRowCheck::checkExchange(TransactionInput& input)
{
    const auto* target = checkedTarget();
    if (target != nullptr &&
        LedgerEntryAccess::whyNotRecord(*target, m_snapshot.currentMember, EntryKind::exchange).has_value())
        refuse("permission", targetAccount);
    const auto& code = m_targetCurrency;
    const bool held = CurrencyInfo::isSupported(code) && (target == nullptr || target->holds(code));
    if (!held || code == m_currency)
        refuse("targetCurrency", targetCurrency);
    input.targetAmountMinor = checkedAmount(targetAmount, code, "targetAmount");
    input.targetCurrency = code;
    if (target != nullptr)
        input.targetAccountID = target->id;
}
