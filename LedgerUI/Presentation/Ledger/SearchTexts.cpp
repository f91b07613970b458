#include "LedgerUI/Presentation/Ledger/SearchTexts.h"

#include <atomic>
#include <utility>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

struct SearchTexts::Made {
    SnapshotPointer snapshot; // until they are made
    std::string locale;
    std::shared_ptr<const SearchTexts> before; // until they are made
    std::once_flag once = {};
    std::atomic<bool> isMade = false;
    std::string text = {};
    std::vector<std::uint32_t> ends = {}; // of the entries' texts, each of which begins where the one before it ends

    void make();
    void add(const LedgerTransaction& entry);
    void addAmount(const LedgerLeg& leg);
};

void SearchTexts::Made::make()
{
    if (const auto earlier = std::exchange(before, nullptr)) {
        text = earlier->m_made->text;
        ends = earlier->m_made->ends;
    }
    const auto& entries = snapshot->transactions;
    ends.reserve(entries.size());
    for (auto at = ends.size(); at < entries.size(); ++at) {
        add(entries[at]);
        ends.push_back(static_cast<std::uint32_t>(text.size()));
    }
    snapshot.reset();
    isMade = true;
}

void SearchTexts::Made::add(const LedgerTransaction& entry)
{
    text += TextFold::folded(entry.note);
    text += '\n';
    for (const auto* optional : {&entry.externalReference, &entry.participantName}) {
        if (*optional) {
            text += TextFold::folded(**optional);
            text += '\n';
        }
    }
    for (const auto& leg : entry.legs)
        addAmount(leg);
}

/// The amount as it is read, without its sign, and as bare digits.
void SearchTexts::Made::addAmount(const LedgerLeg& leg)
{
    const auto formatted = Money::formatDigits(leg.amountMinor, leg.currency, locale);
    std::string_view digits = formatted;
    if (leg.amountMinor < 0)
        digits.remove_prefix(std::string_view{"−"}.size());
    text += digits;
    text += ' ';
    for (const char each : Money::decimalString(leg.amountMinor, leg.currency)) {
        if (each >= '0' && each <= '9')
            text += each;
    }
    text += '\n';
}

/// Texts that nobody has asked for are not waited for: they would keep those before them, and so on for ever.
SearchTexts::SearchTexts(SnapshotPointer snapshot, std::string locale, std::shared_ptr<const SearchTexts> before)
    : m_made(std::make_shared<Made>(std::move(snapshot), std::move(locale),
                                    before && before->m_made->isMade ? std::move(before) : nullptr))
{
}

void SearchTexts::make() const
{
    std::call_once(m_made->once, [this] { m_made->make(); });
}

std::string_view SearchTexts::of(std::uint32_t at) const
{
    make();
    const auto begin = at == 0 ? 0 : m_made->ends[at - 1];
    return std::string_view{m_made->text}.substr(begin, m_made->ends[at] - begin);
}
