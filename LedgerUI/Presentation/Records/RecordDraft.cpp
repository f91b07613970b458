#include "LedgerUI/Presentation/Records/RecordDraft.h"

#include <array>

#include <QStringList>

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Entry/EntryLabels.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/RecordFormParts.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

/// What does not fit is told with what does.
QString withLimit(const QString& sentence, std::string_view locale, std::string_view currency)
{
    return wordIn(locale, EntryProblem::words(), "limit.amount",
                  {sentence.toStdString(), Money::format(Money::maximumMinor, currency, locale)});
}

}

template <class Refusal>
QString RecordProblem<Refusal>::message(std::string_view locale, std::string_view currency) const
{
    QStringList sentences;
    if (refusal) {
        const auto text = refusalText(*refusal, locale);
        sentences << (refusal == Refusal::amountLimit ? withLimit(text, locale, currency) : text);
    }
    if (money) {
        const auto text = qString(friendlyMessage(*money, locale));
        sentences << (money == MoneyError::outOfRange ? withLimit(text, locale, currency) : text);
    }
    if (isNoShare)
        sentences << refusalText(DividendRefusal::ratioInvalid, locale);
    if (paste)
        sentences << EntryLabels::refusedPaste(*paste, locale);
    if (sentences.isEmpty() && part == RecordPart::account)
        sentences << RecordFormParts::word("account.choose", locale);
    return sentences.join(QLatin1Char{' '});
}

template struct RecordProblem<CapitalRefusal>;
template struct RecordProblem<DividendRefusal>;

const APIError* RecordDrafts::conflictIn(const std::optional<Failure>& refusal)
{
    constexpr std::array codes{ServiceCode::capitalRevisionConflict, ServiceCode::capitalBaselineConflict,
                               ServiceCode::dividendRevisionConflict};
    const auto* answer = refusal ? std::get_if<APIError>(&*refusal) : nullptr;
    return answer && std::ranges::find(codes, answer->code) != codes.end() ? answer : nullptr;
}

std::string RecordDrafts::typedFor(const TypedTexts& texts, const std::string& personID)
{
    const auto typed = texts.find(personID);
    return typed == texts.end() ? std::string{} : typed->second;
}

void RecordDrafts::fill(TypedTexts& typed, TypedTexts& newest, const TypedTexts& recorded, const TypedTexts& before,
                        PreserveDraft preserve)
{
    newest.clear();
    for (const auto& [id, text] : recorded) {
        const auto there = typed.find(id);
        const auto was = before.find(id);
        const bool isTyped = preserve == PreserveDraft::yes && there != typed.end() && was != before.end() &&
                             there->second != was->second;
        if (!isTyped)
            typed[id] = text;
        else if (there->second != text)
            newest[id] = text;
    }
    std::erase_if(typed, [&](const auto& each) { return !recorded.contains(each.first); });
}

std::int64_t RecordDrafts::ratioTotal(const TypedTexts& texts, std::string_view locale)
{
    // Hundredths of a percent are read as an amount of two decimals.
    std::int64_t total = 0;
    for (const auto& [id, text] : texts)
        total = Money::add(total, Money::parse(text, "CNY", locale).value_or(0)).value_or(total);
    return total;
}

void RecordDrafts::rewrite(TypedTexts& texts, std::string_view fromLocale, std::string_view toLocale)
{
    for (auto& [id, text] : texts)
        text = EntryForm::rewritten(std::move(text), fromLocale, toLocale);
}
