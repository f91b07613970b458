#include "LedgerService/Books/SetupRefusal.h"

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Books/RefusalTable.h"

namespace LedgerService {

namespace {

constexpr auto invalid = ServiceCode::validationError;
constexpr auto conflict = ServiceCode::conflict;
constexpr auto unknown = ServiceCode::notFound;
constexpr auto forbidden = ServiceCode::forbidden;

constexpr RefusalTable accounts{
    {
        {AccountRules::Refusal::noAuthority, forbidden, "Only those who manage the company change its accounts."},
        {AccountRules::Refusal::unknownAccount, unknown, "There is no such account, or the member does not see it."},
        {AccountRules::Refusal::nameUnsound, invalid, "A name is one line of 1 to 120 characters."},
        {AccountRules::Refusal::nameTaken, conflict, "Another account in use has this name."},
        {AccountRules::Refusal::currencyRequired, invalid, "An account holds at least one currency."},
        {AccountRules::Refusal::currencyUnknown, invalid, "A currency is not supported."},
        {AccountRules::Refusal::currencyRepeated, invalid, "A currency is named twice."},
        {AccountRules::Refusal::purposeUnknown, invalid, "A purpose is 'employee', 'refund' or 'operating'."},
        {AccountRules::Refusal::memberUnknown, unknown, "The command names somebody who is no member."},
        {AccountRules::Refusal::memberInactive, invalid, "The command puts a deactivated member in charge."},
        {AccountRules::Refusal::operatorMissing, invalid, "Such an account needs an operator or an owner."},
        {AccountRules::Refusal::exclusiveOperator, ServiceCode::exclusiveOperator,
         "Only its operator uses such an account; it cannot be left without one."},
        {AccountRules::Refusal::notFunded, invalid, "Only employees', refund and owned accounts have funders."},
        {AccountRules::Refusal::returnUnknown, unknown,
         "There is no such account to return money to, or the member does not see it."},
        {AccountRules::Refusal::returnUnsuitable, invalid,
         "Money returns from an employee's, refund or owned account to a company account in use."},
        {AccountRules::Refusal::notHeld, forbidden,
         "Nobody gets rights on an account that the member does not hold there."},
        {AccountRules::Refusal::archived, ServiceCode::accountArchived,
         "An archived account is taken back into use before it changes."},
        {AccountRules::Refusal::nonzeroBalance, ServiceCode::nonzeroBalance, "The account still holds money."},
        {AccountRules::Refusal::historyAcknowledgementRequired, ServiceCode::historyAcknowledgementRequired,
         "The new operator will see the account's history: acknowledgeHistoryAccess."},
        {AccountRules::Refusal::currencyAcknowledgementRequired, invalid,
         "Everyone who sees the account will see the new currency: acknowledgeCurrencyAccess."},
    },
    AccountRules::Refusal::currencyAcknowledgementRequired};

constexpr RefusalTable categories{
    {
        {CategoryRules::Refusal::noAuthority, forbidden, "Only those who manage the company change its categories."},
        {CategoryRules::Refusal::unknownCategory, unknown, "There is no such category."},
        {CategoryRules::Refusal::unknownKind, invalid, "A category is one of 'income' or 'expense'."},
        {CategoryRules::Refusal::unknownPreset, invalid, "There is no such preset of this kind."},
        {CategoryRules::Refusal::nameRequired, invalid, "A category has a name in at least one language."},
        {CategoryRules::Refusal::nameUnsound, invalid,
         "A category's names are lines of 1 to 120 characters in at most 16 languages."},
        {CategoryRules::Refusal::nameTaken, conflict, "A category beside it has this name."},
        {CategoryRules::Refusal::symbolUnsound, invalid, "A symbol is the name of a drawing."},
        {CategoryRules::Refusal::parentInvalid, ServiceCode::categoryParentInvalid,
         "A category stands under a top-level one of its kind, and has none under itself then."},
        {CategoryRules::Refusal::parentInactive, ServiceCode::categoryParentInactive, "The parent is archived."},
        {CategoryRules::Refusal::archived, ServiceCode::categoryArchived,
         "An archived category is restored before it changes."},
        {CategoryRules::Refusal::hasActiveChildren, ServiceCode::categoryHasActiveChildren,
         "Categories under it are in use."},
        {CategoryRules::Refusal::orderUnsound, invalid, "The new order is not one of the categories seen."},
        {CategoryRules::Refusal::orderChanged, ServiceCode::categoryOrderChanged,
         "The categories are no longer those seen, or in that order."},
    },
    CategoryRules::Refusal::orderChanged};

constexpr RefusalTable settings{
    {
        {FinancialSettingsRules::Refusal::unknownAction, invalid, "An action is 'initialize' or 'configure'."},
        {FinancialSettingsRules::Refusal::foreignField, invalid, "The fields given are not those of the action."},
        {FinancialSettingsRules::Refusal::noAuthority, forbidden,
         "Only those who manage the company change its settings."},
        {FinancialSettingsRules::Refusal::staleRevision, ServiceCode::financialSettingsRevisionConflict,
         "The settings have changed since they were read."},
        {FinancialSettingsRules::Refusal::revisionLimit, ServiceCode::financialSettingsRevisionLimit,
         "The settings have reached their last revision."},
        {FinancialSettingsRules::Refusal::alreadyInitialized, ServiceCode::financialSettingsInitialized,
         "The bookkeeping start date is already confirmed."},
        {FinancialSettingsRules::Refusal::invalidStartDate, invalid, "The start date is no calendar day."},
        {FinancialSettingsRules::Refusal::startTooEarly, invalid, "The start date lies before 1900."},
        {FinancialSettingsRules::Refusal::startInFuture, invalid, "The start date lies in the future."},
        {FinancialSettingsRules::Refusal::startAfterEntries, ServiceCode::financialStartDateConflict,
         "An entry is booked before the start date."},
        {FinancialSettingsRules::Refusal::modeRequired, invalid, "Initializing names a mode."},
        {FinancialSettingsRules::Refusal::modeUnsound, invalid, "A mode is a word of at most 40 letters."},
        {FinancialSettingsRules::Refusal::switchesRequired, invalid, "Configuring sets both switches."},
    },
    FinancialSettingsRules::Refusal::switchesRequired};

static_assert(TemplateRules::mostOfMember == 200); // the words name it
constexpr RefusalTable templates{
    {
        {TemplateRules::Refusal::nameUnsound, invalid, "A name is one line of 1 to 120 characters."},
        {TemplateRules::Refusal::kindRefused, invalid,
         "A template is one of 'income', 'expense', 'transfer' or 'exchange'."},
        {TemplateRules::Refusal::recurrenceUnsound, invalid,
         "A recurrence has a unit, a distance of 1 to 366 and real days in their order."},
        {TemplateRules::Refusal::tooMany, ServiceCode::rateLimited, "A member keeps at most 200 templates."},
        {TemplateRules::Refusal::unknown, unknown, "There is no such template."},
        {TemplateRules::Refusal::notAuthor, forbidden,
         "Only its author and those who manage the company change a template."},
        {TemplateRules::Refusal::changed, conflict, "The template has changed since it was read."},
        {TemplateRules::Refusal::notDue, invalid,
         "The template is not due on this day, or the day is more than 366 days away."},
        {TemplateRules::Refusal::recorded, conflict, "An entry is recorded for this day."},
    },
    TemplateRules::Refusal::recorded};

}

Refusal SetupRefusal::of(AccountRules::Refusal reason)
{
    return accounts.of(reason);
}

Refusal SetupRefusal::of(CategoryRules::Refusal reason)
{
    return categories.of(reason);
}

Refusal SetupRefusal::of(FinancialSettingsRules::Refusal reason)
{
    return settings.of(reason);
}

Refusal SetupRefusal::of(TemplateRules::Refusal reason)
{
    return templates.of(reason);
}

}
