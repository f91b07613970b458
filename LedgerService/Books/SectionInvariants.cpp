#include "LedgerService/Books/SectionInvariants.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace LedgerService {

namespace {

namespace Kind = DividendMovementKind;

/// Money that a record of a section says was moved, and how it names its entry.
struct Booking {
    std::string_view what;
    std::string_view recordID;
    std::string_view entryID;
    std::string_view kind; // of the entry, unless it is a reversal
    std::string_view date;
    std::string_view currency;
    std::int64_t amountMinor = 0;
    std::string_view reversedEntryID; // of the record that this one undoes; empty for others
};

/// One pass over the sections; each check appends what it finds.
class Audit {
public:
    explicit Audit(const Books& books)
        : m_books(books), m_capital(CapitalHistory::stateAfter(books.capitalChanges)),
          m_dividends(DividendHistory::stateAfter(books.dividendChanges))
    {
        for (const auto& entry : books.entries)
            m_entries.emplace(entry.id, &entry);
        for (const auto& member : books.members)
            m_members.insert(member.id);
    }

    std::vector<std::string> run()
    {
        checkChain("capital", m_books.capitalChanges, CapitalHistory::isOfItsAction);
        checkChain("dividends", m_books.dividendChanges, DividendHistory::isOfItsAction);
        checkContributions();
        checkMovements();
        checkEntries();
        for (const auto& currency : m_capital.currencies)
            checkCapital(currency);
        for (const auto& currency : m_dividends.currencies.value_or(std::vector<std::string>{}))
            checkDividends(currency);
        checkPeople("owner", m_capital.participants);
        checkPeople("participant", m_dividends.participants);
        return std::move(m_found);
    }

private:
    template <class... Arguments>
    void found(fmt::format_string<Arguments...> words, Arguments&&... arguments)
    {
        m_found.push_back(fmt::format(words, std::forward<Arguments>(arguments)...));
    }

    [[nodiscard]] const LedgerTransaction* entry(std::string_view id) const
    {
        const auto found = m_entries.find(id);
        return found == m_entries.end() ? nullptr : found->second;
    }

    /// Revisions follow each other without a gap, and each change made what its action makes.
    template <class Change, class IsOfItsAction>
    void checkChain(std::string_view section, const std::vector<Change>& changes, IsOfItsAction isOfItsAction)
    {
        int revision = 0;
        for (const auto& change : changes) {
            if (change.revision != ++revision)
                found("{}: revision {} stands in the place of {}", section, change.revision, revision);
            if (!isOfItsAction(change))
                found("{} revision {}: the action {} made something else", section, change.revision, change.action);
            if (!LedgerDay::isValid(change.date))
                found("{} revision {}: '{}' is no day", section, change.revision, change.date);
            if (!m_members.contains(change.memberID))
                found("{} revision {}: made by nobody", section, change.revision);
        }
    }

    void checkContributions()
    {
        std::unordered_map<std::string_view, std::string_view> entryOf;
        for (const auto& each : m_capital.contributions) {
            entryOf.emplace(each.id, each.transactionID);
            const auto undone = each.reversalOf ? entryOf[*each.reversalOf] : std::string_view{};
            checkBooking({"contribution", each.id, each.transactionID, EntryKind::capital, each.date, each.currency,
                          each.amountMinor, undone});
            const auto* const booked = entry(each.transactionID);
            if (booked && (booked->capitalContributionID != each.id || booked->participantName != each.participantName))
                found("contribution {}: its entry names another", each.id);
            m_booked.insert(each.transactionID);
        }
    }

    void checkMovements()
    {
        std::unordered_map<std::string_view, const DividendMovement*> byID;
        for (const auto& each : m_dividends.movements) {
            byID.emplace(each.id, &each);
            const auto* const undone = each.reversalOf ? byID[*each.reversalOf] : nullptr;
            const auto& origin = undone ? *undone : each;
            const bool moves = origin.kind != Kind::application;
            if (moves != each.transactionID.has_value())
                found("dividend movement {}: money is booked, and only that, by an entry", each.id);
            if (!moves || !each.transactionID)
                continue;
            const bool arrives = (origin.kind == Kind::returning) != (undone != nullptr);
            checkBooking(
                {"dividend movement", each.id, *each.transactionID, EntryKind::dividend, each.date, each.currency,
                 arrives ? each.amountMinor : -each.amountMinor,
                 undone ? std::string_view{origin.transactionID ? *origin.transactionID : ""} : std::string_view{}});
            const auto* const booked = entry(*each.transactionID);
            if (booked && (booked->dividendMovementID != each.id || booked->distributionKind != each.kind))
                found("dividend movement {}: its entry names another", each.id);
            m_booked.insert(*each.transactionID);
        }
    }

    void checkBooking(const Booking& booking)
    {
        const auto* const booked = entry(booking.entryID);
        if (!booked)
            return found("{} {}: there is no entry {}", booking.what, booking.recordID, booking.entryID);
        const auto kind = booking.reversedEntryID.empty() ? booking.kind : EntryKind::reversal;
        const bool isSo = booked->kind == kind && booked->date == booking.date && booked->legs.size() == 1 &&
                          booked->legs[0].currency == booking.currency &&
                          booked->legs[0].amountMinor == booking.amountMinor &&
                          std::string_view{booked->reversalOf ? *booked->reversalOf : ""} == booking.reversedEntryID;
        if (!isSo)
            found("{} {}: the entry {} books something else", booking.what, booking.recordID, booking.entryID);
    }

    /// No entry speaks of a section that knows nothing of it.
    void checkEntries()
    {
        for (const auto& each : m_books.entries) {
            const bool speaks = each.kind == EntryKind::capital || each.kind == EntryKind::dividend ||
                                each.capitalContributionID || each.dividendMovementID || each.distributionKind ||
                                each.participantName;
            if (speaks && !m_booked.contains(each.id))
                found("entry {}: no contribution and no dividend movement is booked by it", each.id);
            if (each.capitalContributionID && each.dividendMovementID)
                found("entry {}: belongs to capital and to dividends", each.id);
            if (!each.reversalOf)
                continue;
            const auto* const original = entry(*each.reversalOf);
            if (original && m_booked.contains(original->id) != m_booked.contains(each.id))
                found("entry {}: undoes {} past its section", each.id, original->id);
        }
    }

    /// What the section says was contributed is what the entries have moved, and the baseline in force.
    void checkCapital(const std::string& currency)
    {
        const auto summary = CapitalSummary::create(m_capital, currency, std::nullopt, std::nullopt);
        if (!summary)
            return found("capital: the section breaks its own rules in {}", currency);
        std::int64_t moved = 0;
        for (const auto& each : m_books.entries)
            moved += each.capitalContributionID ? movedIn(each, currency) : 0;
        if (const auto* const baseline = CapitalMath::currentBaseline(m_capital, currency)) {
            for (const auto& line : baseline->entries)
                moved += line.amountMinor;
        }
        if (summary->recordedMinor != moved)
            found("capital: {} {} are recorded, entries and baseline make {}", summary->recordedMinor, currency, moved);
    }

    /// What is paid and left of advances is what the entries have moved.
    void checkDividends(const std::string& currency)
    {
        const auto book = DividendBook::create(m_dividends, currency, std::nullopt);
        if (!book)
            return found("dividends: the section breaks its own rules in {}", currency);
        std::int64_t out = 0;
        for (const auto* movement : book->effective()) {
            if (movement->kind == Kind::payment || movement->kind == Kind::advance)
                out += movement->amountMinor;
            if (movement->kind == Kind::returning)
                out -= movement->amountMinor;
        }
        std::int64_t moved = 0;
        for (const auto& each : m_books.entries)
            moved += each.dividendMovementID ? movedIn(each, currency) : 0;
        if (out != -moved)
            found("dividends: {} {} are paid out, entries make {}", out, currency, -moved);
        checkSettlement(*book, currency);
    }

    void checkSettlement(const DividendBook& book, const std::string& currency)
    {
        for (const auto* batch : book.batches()) {
            std::int64_t sum = 0;
            for (const auto& line : batch->lines) {
                const auto settled = book.line(batch->id, line.participantID);
                if (settled.appliedMinor + settled.paidMinor + settled.unpaidMinor != line.amountMinor)
                    found("dividends: allocation {} does not settle {} to the unit", batch->id, currency);
                sum += line.amountMinor;
            }
            if (sum != batch->amountMinor)
                found("dividends: the lines of allocation {} do not add up", batch->id);
        }
    }

    static std::int64_t movedIn(const LedgerTransaction& entry, const std::string& currency)
    {
        std::int64_t sum = 0;
        for (const auto& leg : entry.legs)
            sum += leg.currency == currency ? leg.amountMinor : 0;
        return sum;
    }

    template <class Person>
    void checkPeople(std::string_view what, const std::vector<Person>& people)
    {
        std::set<std::string_view> members;
        for (const auto& each : people) {
            if (each.id.empty() || each.name.empty())
                found("{} '{}': has no id or no name", what, each.id);
            if (each.memberID && (!m_members.contains(*each.memberID) || !members.insert(*each.memberID).second))
                found("{} {}: the member {} is unknown or somebody else", what, each.id, *each.memberID);
        }
    }

    const Books& m_books;
    CapitalState m_capital;
    DividendState m_dividends;
    std::unordered_map<std::string_view, const LedgerTransaction*> m_entries;
    std::unordered_set<std::string_view> m_members;
    std::unordered_set<std::string_view> m_booked; // entries that a record of a section names
    std::vector<std::string> m_found;
};

}

std::vector<std::string> SectionInvariants::broken(const Books& books)
{
    return Audit{books}.run();
}

}
