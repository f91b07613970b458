#include "Tests/EndToEnd/Stage/BooksOnDisk.h"

#include <memory>

#include <sqlite3.h>

#include "Tests/EndToEnd/Stage/StoryTeller.h"

namespace {

constexpr auto countNoted = "SELECT COUNT(*) FROM entries WHERE note = ?1";

constexpr auto countReceipts = R"sql(
    SELECT COUNT(*) FROM attachments AS receipt JOIN entries AS entry
        ON entry.company_id = receipt.company_id AND entry.id = receipt.transaction_id
    WHERE entry.note = ?1
)sql";

constexpr auto countLoose = "SELECT COUNT(*) FROM attachments WHERE linked_change = 0";

constexpr auto countDrafts = "SELECT COUNT(*) FROM entry_drafts WHERE json_extract(entry, '$.note') = ?1";

constexpr auto countSent = "SELECT COUNT(*) FROM entry_drafts WHERE json_extract(sent, '$.note') = ?1";

constexpr auto countSessions = "SELECT COUNT(*) FROM sessions WHERE revoked_at IS NULL";

constexpr auto countBroken = R"sql(
    SELECT COUNT(*) FROM balances AS held WHERE amount_minor <> (
        SELECT COALESCE(SUM(amount_minor), 0) FROM legs
        WHERE legs.company_id = held.company_id AND legs.account_id = held.account_id
            AND legs.currency = held.currency)
)sql";

}

int BooksOnDisk::entriesNoted(const QString& note) const
{
    return static_cast<int>(number(countNoted, note));
}

int BooksOnDisk::receiptsOn(const QString& note) const
{
    return static_cast<int>(number(countReceipts, note));
}

int BooksOnDisk::looseReceipts() const
{
    return static_cast<int>(number(countLoose, {}));
}

int BooksOnDisk::draftsNoted(const QString& note) const
{
    return static_cast<int>(number(countDrafts, note));
}

int BooksOnDisk::draftsSent(const QString& note) const
{
    return static_cast<int>(number(countSent, note));
}

int BooksOnDisk::openSessions() const
{
    return static_cast<int>(number(countSessions, {}));
}

int BooksOnDisk::brokenBalances() const
{
    return static_cast<int>(number(countBroken, {}));
}

std::int64_t BooksOnDisk::number(const char* query, const QString& argument) const
{
    sqlite3* opened = nullptr;
    const auto status = sqlite3_open_v2(m_file.toUtf8().constData(), &opened, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database{opened, sqlite3_close};
    expect(status == SQLITE_OK, QStringLiteral("the books are the file %1").arg(m_file));

    sqlite3_stmt* prepared = nullptr;
    expect(sqlite3_prepare_v2(opened, query, -1, &prepared, nullptr) == SQLITE_OK,
           QStringLiteral("the books can be read: %1").arg(QString::fromUtf8(sqlite3_errmsg(opened))));
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement{prepared, sqlite3_finalize};
    if (sqlite3_bind_parameter_count(prepared) > 0)
        sqlite3_bind_text(prepared, 1, argument.toUtf8().constData(), -1, SQLITE_TRANSIENT);
    expect(sqlite3_step(prepared) == SQLITE_ROW, QStringLiteral("the books answer"));
    return sqlite3_column_int64(prepared, 0);
}
