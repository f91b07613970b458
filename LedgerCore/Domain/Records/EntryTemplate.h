#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

/// What a template says of the entry that a person will record with it.
struct TemplateEntry {
    std::string kind; // income, expense, transfer or exchange
    std::string note;
    std::optional<std::string> categoryID;
    std::optional<std::string> sourceAccountID; // as in the entry
    std::optional<std::string> targetAccountID;
    std::string currency;
    std::optional<std::string> targetCurrency;
    std::optional<std::int64_t> amountMinor; // not set: the person enters it each time
    std::optional<std::int64_t> targetAmountMinor;

    bool operator==(const TemplateEntry&) const = default;
};
BOOST_DESCRIBE_STRUCT(TemplateEntry, (),
                      (kind, note, categoryID, sourceAccountID, targetAccountID, currency, targetCurrency, amountMinor,
                       targetAmountMinor))

/// The days on which an entry is due: the first one, and every so many units after it.
struct Recurrence {
    std::string unit; // "day", "week", "month" or "year"
    int every = 1;
    std::string firstDay;               // "YYYY-MM-DD"
    std::optional<std::string> lastDay; // not set: without an end

    bool operator==(const Recurrence&) const = default;
};
BOOST_DESCRIBE_STRUCT(Recurrence, (), (unit, every, firstDay, lastDay))

/// A due day on which a person has acted.
struct SettledDay {
    std::string day;
    std::optional<std::string> entryID; // the entry that was recorded for it; not set: the day was skipped

    bool operator==(const SettledDay&) const = default;
};
BOOST_DESCRIBE_STRUCT(SettledDay, (), (day, entryID))

/// An entry that is recorded again and again, kept on the service. It never records anything by itself.
struct EntryTemplate {
    std::string id;
    std::string memberID; // the author
    std::string name;
    bool shared = false; // whether others who see its accounts see it
    TemplateEntry entry;
    std::optional<Recurrence> recurrence;
    int revision = 1;                // counts the changes
    std::vector<SettledDay> settled; // of the last year and later, in the order of the days

    bool operator==(const EntryTemplate&) const = default;
};
BOOST_DESCRIBE_STRUCT(EntryTemplate, (), (id, memberID, name, shared, entry, recurrence, revision, settled))

/// The templates that the member sees, in the order of their making.
struct EntryTemplateList {
    std::vector<EntryTemplate> templates;

    bool operator==(const EntryTemplateList&) const = default;
};
BOOST_DESCRIBE_STRUCT(EntryTemplateList, (), (templates))

struct TemplateCreate {
    std::string name;
    bool shared = false;
    TemplateEntry entry;
    std::optional<Recurrence> recurrence;
    std::string idempotencyKey;

    bool operator==(const TemplateCreate&) const = default;
};
BOOST_DESCRIBE_STRUCT(TemplateCreate, (), (name, shared, entry, recurrence, idempotencyKey))

/// All that a template says from now on; what is not set is taken away.
struct TemplateUpdate {
    std::string name;
    bool shared = false;
    TemplateEntry entry;
    std::optional<Recurrence> recurrence;
    int expectedRevision = 0; // the one that the client saw

    bool operator==(const TemplateUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(TemplateUpdate, (), (name, shared, entry, recurrence, expectedRevision))

/// Whether a due day is skipped, or proposed again.
struct TemplateDay {
    std::string day;
    bool skipped = true;

    bool operator==(const TemplateDay&) const = default;
};
BOOST_DESCRIBE_STRUCT(TemplateDay, (), (day, skipped))
