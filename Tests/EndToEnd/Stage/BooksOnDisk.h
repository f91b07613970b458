#pragma once

#include <cstdint>
#include <string>

#include <QString>

/// What the service's database file holds, read past the service.
class BooksOnDisk {
public:
    explicit BooksOnDisk(QString file) : m_file(std::move(file)) {}

    /// How many entries carry this note, in all companies.
    [[nodiscard]] int entriesNoted(const QString& note) const;
    /// How many receipts the entries with this note carry.
    [[nodiscard]] int receiptsOn(const QString& note) const;
    /// How many receipts were uploaded and belong to no entry.
    [[nodiscard]] int looseReceipts() const;
    /// How many drafts with this note the service keeps, and how many of them as sent.
    [[nodiscard]] int draftsNoted(const QString& note) const;
    [[nodiscard]] int draftsSent(const QString& note) const;
    /// How many sessions the service has not ended.
    [[nodiscard]] int openSessions() const;
    /// How many balances differ from the sum of their legs.
    [[nodiscard]] int brokenBalances() const;

private:
    [[nodiscard]] std::int64_t number(const char* query, const QString& argument) const;

    QString m_file;
};
