#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Dividends/DividendForm.h"

std::vector<const DividendParticipant*> DividendForms::people(const DividendForm& form)
{
    std::vector<const DividendParticipant*> offered;
    for (const auto& each : form.captured.participants) {
        if (!each.archived)
            offered.push_back(&each);
    }
    return offered;
}

std::vector<DividendCommands::ShareText> DividendForms::shareTexts(const DividendForm& form)
{
    std::vector<DividendCommands::ShareText> texts;
    for (const auto* each : people(form)) {
        if (!form.leftOut.contains(each->id))
            texts.push_back({each->id, RecordDrafts::typedFor(form.ratios, each->id)});
    }
    return texts;
}

std::optional<std::vector<DividendShare>> DividendForms::shares(const DividendForm& form, std::string_view locale)
{
    return DividendCommands::shares(shareTexts(form), locale);
}

std::optional<std::vector<DividendLine>> DividendForms::preview(const DividendForm& form, std::string_view locale)
{
    const auto total = Money::parse(form.amount, form.currency, locale);
    const auto ratios = shares(form, locale);
    if (!total || !ratios || !CurrencyInfo::isSupported(form.currency))
        return std::nullopt;
    auto lines = DividendAllocationCalculator::allocate(*total, *ratios, form.captured.participants);
    return lines ? std::optional{*std::move(lines)} : std::nullopt;
}

std::int64_t DividendForms::ratioTotal(const DividendForm& form, std::string_view locale)
{
    TypedTexts ratios;
    for (const auto& each : shareTexts(form))
        ratios[each.participantID] = each.percentage;
    return RecordDrafts::ratioTotal(ratios, locale);
}
