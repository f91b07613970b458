#include "LedgerCore/Domain/Exports/LedgerCSV.h"

#include <array>
#include <unordered_map>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace {

constexpr std::array<std::string_view, 22> columns{"transaction_id",
                                                   "date",
                                                   "kind",
                                                   "account",
                                                   "currency",
                                                   "amount",
                                                   "amount_minor",
                                                   "category",
                                                   "member",
                                                   "note",
                                                   "reversal_of",
                                                   "reversed_by",
                                                   "original_transaction_id",
                                                   "external_reference",
                                                   "transfer_purpose",
                                                   "created_at",
                                                   "distribution_kind",
                                                   "participant_name",
                                                   "dividend_movement_id",
                                                   "capital_contribution_id",
                                                   "receipt_count",
                                                   "receipt_names"};
constexpr std::size_t plainColumns = 20;   // without the receipt index
constexpr std::size_t bytesPerEntry = 384; // a usual entry of one or two legs

using EscapedNames = std::unordered_map<std::string_view, std::string>;

std::string_view nameIn(const EscapedNames& names, std::string_view id)
{
    const auto found = names.find(id);
    return found == names.end() ? std::string_view{"\"\""} : std::string_view{found->second};
}

template <class Records>
EscapedNames namesOf(const Records& records)
{
    EscapedNames names;
    names.reserve(records.size());
    for (const auto& each : records)
        names.emplace(each.id, LedgerCSV::escaped(each.name));
    return names;
}

EscapedNames categoryNames(const std::vector<Category>& categories, std::string_view locale)
{
    const CategoryDirectory directory{categories};
    EscapedNames names;
    for (const auto* category : directory.categories())
        names.emplace(category->id, LedgerCSV::escaped(directory.pathName(*category, locale)));
    return names;
}

/// Writes the legs of one entry after another. What the legs of an entry share is escaped once.
class LegWriter {
public:
    LegWriter(const LedgerSnapshot& snapshot, std::string_view locale, LedgerCSVOptions options)
        : m_options(options), m_accounts(namesOf(snapshot.accounts)), m_members(namesOf(snapshot.members)),
          m_categories(categoryNames(snapshot.categories, locale))
    {
        if (options.includesReceiptIndex && MemberRights::canListReceipts(snapshot.currentMember)) {
            for (const auto& attachment : snapshot.attachments)
                m_receipts.emplace(attachment.id, attachment.name);
        }
    }

    void write(CsvDocument& document, const LedgerTransaction& entry)
    {
        collectShared(entry);
        for (const auto& leg : entry.legs) {
            document.escapedField(m_before);
            document.escapedField(nameIn(m_accounts, leg.accountID));
            document.field(leg.currency);
            document.field(Money::decimalString(leg.amountMinor, leg.currency));
            document.number(leg.amountMinor);
            document.escapedField(m_after);
            document.endRecord();
        }
    }

private:
    void collectShared(const LedgerTransaction& entry)
    {
        m_before.clear();
        append(m_before, entry.id);
        append(m_before, entry.date);
        append(m_before, entry.kind);
        m_after.clear();
        m_after += nameIn(m_categories, orEmpty(entry.categoryID));
        m_after += ',';
        m_after += nameIn(m_members, entry.memberID);
        append(m_after, entry.note);
        append(m_after, orEmpty(entry.reversalOf));
        append(m_after, orEmpty(entry.reversedBy));
        append(m_after, orEmpty(entry.originalTransactionID));
        append(m_after, orEmpty(entry.externalReference));
        append(m_after, orEmpty(entry.transferPurpose));
        append(m_after, entry.createdAt);
        append(m_after, orEmpty(entry.distributionKind));
        append(m_after, orEmpty(entry.participantName));
        append(m_after, orEmpty(entry.dividendMovementID));
        append(m_after, orEmpty(entry.capitalContributionID));
        if (m_options.includesReceiptIndex) {
            append(m_after, std::to_string(entry.attachmentIDs.size()));
            append(m_after, receiptNames(entry));
        }
    }

    [[nodiscard]] std::string receiptNames(const LedgerTransaction& entry) const
    {
        std::string names;
        for (const auto& id : entry.attachmentIDs) {
            const auto found = m_receipts.find(id);
            if (found == m_receipts.end())
                continue;
            if (!names.empty())
                names += "; ";
            names += found->second;
        }
        return names;
    }

    static void append(std::string& fields, std::string_view value)
    {
        if (!fields.empty())
            fields += ',';
        CsvDocument::appendEscaped(fields, value);
    }

    LedgerCSVOptions m_options;
    EscapedNames m_accounts;
    EscapedNames m_members;
    EscapedNames m_categories;
    std::unordered_map<std::string_view, std::string_view> m_receipts;
    std::string m_before; // the fields in front of the leg's own
    std::string m_after;
};

}

std::string LedgerCSV::escaped(std::string_view value)
{
    std::string field;
    field.reserve(value.size() + 2);
    CsvDocument::appendEscaped(field, value);
    return field;
}

std::string LedgerCSV::render(const LedgerSnapshot& snapshot, std::string_view locale, LedgerCSVOptions options)
{
    const std::span header{columns};
    CsvDocument document{options.includesReceiptIndex ? header : header.first(plainColumns),
                         (snapshot.transactions.size() + 1) * bytesPerEntry};
    LegWriter writer{snapshot, locale, options};
    for (const auto& entry : snapshot.transactions)
        writer.write(document, entry);
    return document.take();
}

std::size_t LedgerCSV::columnCount(LedgerCSVOptions options)
{
    return options.includesReceiptIndex ? columns.size() : plainColumns;
}

std::string LedgerCSV::fileName(std::string_view startDate, std::string_view endDate)
{
    std::string name{"quillet-ledger-"};
    name += startDate;
    if (endDate != startDate) {
        name += '_';
        name += endDate;
    }
    return name + ".csv";
}
