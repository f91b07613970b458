#pragma once

#include <map>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"

/// The values of audit records in words: identifiers by the names of the books, amounts with their currency, days,
/// roles and rights as the screens call them. What no word is known for stays as it was sent.
class AuditValueText {
public:
    /// Of a record of this kind. The snapshot must outlive it.
    AuditValueText(const LedgerSnapshot& snapshot, std::string_view kind, std::string locale);

    /// The values that can be compared, by the names of their fields. The rights on an account are one value under the
    /// account's name; what only the protocol needs is left out.
    [[nodiscard]] static std::map<std::string, std::string, std::less<>> comparable(const AuditValues& values);

    /// What the field is called: "Rights by account · Operating bank".
    [[nodiscard]] QString label(std::string_view field) const;
    /// The value of `field`. `all` holds the other values of the record, such as an amount's currency.
    [[nodiscard]] QString value(std::string_view field, const std::string& value,
                                const std::map<std::string, std::string, std::less<>>& all) const;

private:
    using Meaning = QString (AuditValueText::*)(const std::string& value) const;
    [[nodiscard]] static Meaning meaningOf(std::string_view leaf);
    [[nodiscard]] QString each(const std::string& values, Meaning meaning) const;

    [[nodiscard]] QString account(const std::string& id) const;
    [[nodiscard]] QString member(const std::string& id) const;
    [[nodiscard]] QString category(const std::string& id) const;
    [[nodiscard]] QString participant(const std::string& id) const;
    [[nodiscard]] QString role(const std::string& role) const;
    [[nodiscard]] QString permission(const std::string& permission) const;
    [[nodiscard]] QString action(const std::string& action) const;
    [[nodiscard]] QString command(const std::string& command) const;
    [[nodiscard]] QString purpose(const std::string& purpose) const;
    [[nodiscard]] QString kind(const std::string& kind) const;
    [[nodiscard]] QString color(const std::string& id) const;
    [[nodiscard]] QString country(const std::string& code) const;
    [[nodiscard]] QString language(const std::string& tag) const;
    [[nodiscard]] QString mode(const std::string& mode) const;
    [[nodiscard]] QString status(const std::string& status) const;
    [[nodiscard]] QString unit(const std::string& unit) const;
    [[nodiscard]] QString day(const std::string& day) const;
    [[nodiscard]] QString moment(const std::string& stamp) const;
    [[nodiscard]] QString share(const std::string& basisPoints) const;
    [[nodiscard]] QString bytes(const std::string& count) const;

    const LedgerSnapshot& m_snapshot;
    bool m_isOfDividends; // whose commands share some names with those of capital
    LedgerNames m_names;
};
