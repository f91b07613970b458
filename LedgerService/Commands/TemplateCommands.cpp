#include "LedgerService/Commands/TemplateCommands.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Templates/RecurrenceDays.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/TemplateRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

namespace {

using Reason = TemplateRules::Refusal;

std::unexpected<Refusal> refused(Reason reason)
{
    return std::unexpected(SetupRefusal::of(reason));
}

std::optional<Account> accountOf(const CommandAct& act, const std::optional<std::string>& id)
{
    return id ? AccountRepository::find(act.connection, act.companyID, *id) : std::nullopt;
}

bool seesEntryOf(const CommandAct& act, const SettledDay& settled)
{
    const auto entry =
        settled.entryID ? EntryRepository::find(act.connection, act.companyID, *settled.entryID) : std::nullopt;
    return entry && Visibility::seesEntry(*entry, act.member);
}

/// The entry as it could be recorded today, by the rules of recording.
std::optional<Refusal> whyNotKeep(const CommandAct& act, const TemplateEntry& entry)
{
    const auto settings = CompanyRepository::settings(act.connection, act.companyID);
    const auto source = accountOf(act, entry.sourceAccountID);
    const auto target = accountOf(act, entry.targetAccountID);
    const auto category =
        entry.categoryID ? CategoryRepository::find(act.connection, act.companyID, *entry.categoryID) : std::nullopt;
    PostingContext context;
    context.member = &act.member;
    context.today = act.today;
    context.start = EntryDays::start(settings);
    context.source = source ? &*source : nullptr;
    context.target = target ? &*target : nullptr;
    context.category = category ? &*category : nullptr;
    const auto reason = TemplateRules::whyNotKeep(entry, context);
    return reason ? std::optional{BookRefusal::of(*reason)} : std::nullopt;
}

std::expected<StoredTemplate, Refusal> seen(const CommandAct& act, std::string_view templateID)
{
    auto stored = TemplateRepository::find(act.connection, act.companyID, templateID);
    if (!stored || stored->removedAt || !TemplateRules::maySee(stored->kept, act.member))
        return refused(Reason::unknown);
    return *std::move(stored);
}

std::expected<StoredTemplate, Refusal> changeable(const CommandAct& act, std::string_view templateID)
{
    auto stored = seen(act, templateID);
    if (stored && !TemplateRules::mayChange(stored->kept, act.member))
        return refused(Reason::notAuthor);
    return stored;
}

EntryTemplate changed(const EntryTemplate& kept, const TemplateUpdate& command)
{
    auto after = kept;
    after.name = TextFold::trimmed(command.name);
    after.shared = command.shared;
    after.entry = command.entry;
    after.recurrence = command.recurrence;
    return after;
}

}

EntryTemplateList TemplateCommands::list(const CommandAct& act)
{
    EntryTemplateList list{
        TemplateRepository::all(act.connection, act.companyID, TemplateSchedule::firstProposed(act.today))};
    std::erase_if(list.templates, [&](const EntryTemplate& each) { return !TemplateRules::maySee(each, act.member); });
    return list;
}

std::expected<void, Refusal> TemplateCommands::create(const CommandAct& act, const TemplateCreate& command)
{
    if (TemplateRepository::countOf(act.connection, act.companyID, act.member.id) >=
        static_cast<int>(TemplateRules::mostOfMember))
        return refused(Reason::tooMany);
    if (auto refusal = whyNotKeep(act, command.entry))
        return std::unexpected(*std::move(refusal));
    StoredTemplate stored;
    stored.kept = {.id = Random::identifier(),
                   .memberID = act.member.id,
                   .name = std::string{TextFold::trimmed(command.name)},
                   .shared = command.shared,
                   .entry = command.entry,
                   .recurrence = command.recurrence,
                   .revision = 1,
                   .settled = {}};
    stored.createdAt = act.now;
    TemplateRepository::insert(act.connection, act.companyID, stored);
    act.note.record = stored.kept.id;
    return {};
}

std::expected<void, Refusal> TemplateCommands::update(const CommandAct& act, std::string_view templateID,
                                                      const TemplateUpdate& command)
{
    auto stored = changeable(act, templateID);
    if (!stored)
        return std::unexpected(std::move(stored.error()));
    const auto before = stored->kept;
    auto after = changed(before, command);
    if (after == before) {
        act.note.isRepetition = true;
        return {};
    }
    if (command.expectedRevision != before.revision)
        return refused(Reason::changed);
    if (after.entry != before.entry) {
        if (auto refusal = whyNotKeep(act, after.entry))
            return std::unexpected(*std::move(refusal));
    }
    after.revision += 1;
    stored->kept = after;
    TemplateRepository::update(act.connection, act.companyID, *stored);
    act.tell(before, after);
    return {};
}

std::expected<void, Refusal> TemplateCommands::remove(const CommandAct& act, std::string_view templateID)
{
    auto stored = changeable(act, templateID);
    if (!stored)
        return std::unexpected(std::move(stored.error()));
    stored->removedAt = act.now;
    TemplateRepository::update(act.connection, act.companyID, *stored);
    act.note.before = Json::encode(stored->kept);
    return {};
}

std::expected<void, Refusal> TemplateCommands::setDay(const CommandAct& act, std::string_view templateID,
                                                      const TemplateDay& command)
{
    const auto stored = seen(act, templateID);
    if (!stored)
        return std::unexpected(stored.error());
    const auto& kept = stored->kept;
    const auto account = accountOf(act, std::string{TemplateRules::accountID(kept.entry)});
    if (!account || !TemplateRules::mayRecord(kept.entry, *account, act.member))
        return std::unexpected(BookRefusal::of(PostingReason::notGranted));
    if (!LedgerDay::isValid(command.day) || !kept.recurrence ||
        !RecurrenceDays::occursOn(*kept.recurrence, command.day) ||
        !TemplateSchedule::takesActionOn(command.day, act.today))
        return refused(Reason::notDue);
    const auto settled = TemplateRepository::day(act.connection, act.companyID, templateID, command.day);
    if (settled && settled->entryID)
        return refused(Reason::recorded);
    if (settled.has_value() == command.skipped) {
        act.note.isRepetition = true;
        return {};
    }
    if (command.skipped)
        TemplateRepository::settle(act.connection, act.companyID,
                                   {.templateID = kept.id,
                                    .settled = {.day = command.day, .entryID = {}},
                                    .memberID = act.member.id,
                                    .at = act.now});
    else
        TemplateRepository::open(act.connection, act.companyID, templateID, command.day);
    return {};
}

std::optional<TemplateCommands::DueDay> TemplateCommands::dueDay(const CommandAct& act, std::string_view key)
{
    auto occurrence = TemplateOccurrence::ofKey(key);
    if (!occurrence)
        return std::nullopt;
    const auto stored = TemplateRepository::find(act.connection, act.companyID, occurrence->templateID);
    if (!stored)
        return std::nullopt;
    auto settled = TemplateRepository::day(act.connection, act.companyID, occurrence->templateID, occurrence->day);
    const bool isSeen = TemplateRules::maySee(stored->kept, act.member);
    if (settled && !isSeen && !seesEntryOf(act, *settled))
        settled.reset();
    const auto account = accountOf(act, std::string{TemplateRules::accountID(stored->kept.entry)});
    const bool maySettle = isSeen && account && TemplateRules::mayRecord(stored->kept.entry, *account, act.member);
    return DueDay{.occurrence = *std::move(occurrence), .settled = std::move(settled), .maySettle = maySettle};
}

void TemplateCommands::keepRecorded(const CommandAct& act, const TemplateOccurrence& occurrence,
                                    const LedgerTransaction& entry)
{
    TemplateRepository::settle(act.connection, act.companyID,
                               {.templateID = occurrence.templateID,
                                .settled = {.day = occurrence.day, .entryID = entry.id},
                                .memberID = act.member.id,
                                .at = act.now});
}

}
