#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include <QString>

#include "LedgerCore/Domain/Records/EntryTemplate.h"

/// A template as it is being filled in. What the entry is about stands; name, amount, note, rhythm and sharing change.
struct TemplateForm {
    enum class Field { name, amount, note, every, firstDay, lastDay };

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

    /// What keeps it from being saved, under the fields.
    [[nodiscard]] std::map<Field, QString> messages(std::string_view locale) const;
    /// What is sent for a form without messages.
    [[nodiscard]] TemplateCreate creation(std::string key, std::string_view locale) const;
    [[nodiscard]] TemplateUpdate update(std::string_view locale) const;

private:
    [[nodiscard]] TemplateEntry typedEntry(std::string_view locale) const;
    [[nodiscard]] std::optional<Recurrence> recurrence() const;
};

/// What is sent for a form: a new template, or the change of one.
struct TemplateCommand {
    std::string id; // of the one that changes
    std::variant<TemplateCreate, TemplateUpdate> body;

    bool operator==(const TemplateCommand&) const = default;
};
