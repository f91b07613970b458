#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A template as it is being filled in. Kind and currencies of its entry stand; everything else changes.
struct TemplateForm {
    enum class Field { name, account, target, category, amount, note, every, firstDay, lastDay };

    std::string id;   // empty for a new one
    int revision = 0; // the one that is being changed
    std::string name;
    bool shared = false;
    TemplateEntry entry;
    std::string amount; // as typed; blank where it is entered each time
    std::string unit;   // a `RecurrenceUnit`; empty where it does not repeat
    std::string every = "1";
    std::string firstDay;
    std::string lastDay;
    std::string entryDay; // of the entry that a new one is made of

    bool operator==(const TemplateForm&) const = default;

    /// Of an entry of this day.
    static TemplateForm fresh(TemplateEntry entry, std::string name, std::string entryDay, std::string_view locale);
    static TemplateForm of(const EntryTemplate& kept, std::string_view today, std::string_view locale);

    /// Another unit. A new template is due first on the next day of its rhythm after the entry that it is made of: that
    /// one is recorded, or about to be. Where a shorter month would move the day for good, it begins with the entry's.
    [[nodiscard]] TemplateForm withUnit(std::string chosen) const;

    /// Another account to record on, of those that take it. Where money cannot go from there, no destination is left.
    [[nodiscard]] TemplateForm withAccount(const std::string& id, const LedgerSnapshot& snapshot) const;
    [[nodiscard]] TemplateForm withTarget(const std::string& id) const;
    /// An empty one is chosen each time.
    [[nodiscard]] TemplateForm withCategory(const std::string& id) const;

    /// The account that the entry is recorded on.
    static const std::optional<std::string>& primaryAccount(const TemplateEntry& entry);
    static bool hasDestination(const TemplateEntry& entry);
    static bool hasCategory(const TemplateEntry& entry);
    /// Where a transfer or exchange may go, in its currencies.
    static std::vector<EntryDestination> destinations(const TemplateEntry& entry, const LedgerSnapshot& snapshot);

    /// What keeps it from being saved, under the fields.
    [[nodiscard]] std::map<Field, QString> messages(std::string_view locale) const;
    /// What is sent for a form without messages.
    [[nodiscard]] TemplateCreate creation(std::string key, std::string_view locale) const;
    [[nodiscard]] TemplateUpdate update(std::string_view locale) const;

private:
    static TransactionDraft draftOf(const TemplateEntry& entry);
    [[nodiscard]] TemplateEntry typedEntry(std::string_view locale) const;
    [[nodiscard]] std::optional<Recurrence> recurrence() const;
};

/// What is sent for a form: a new template, or the change of one.
struct TemplateCommand {
    std::string id; // of the one that changes
    std::variant<TemplateCreate, TemplateUpdate> body;

    bool operator==(const TemplateCommand&) const = default;
};
