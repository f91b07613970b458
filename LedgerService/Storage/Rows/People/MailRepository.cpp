#include "LedgerService/Storage/Rows/People/MailRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("id", &WaitingMail::id),
                          column("recipient", &WaitingMail::recipient),
                          column("locale", &WaitingMail::locale),
                          column("subject", &WaitingMail::subject),
                          column("body", &WaitingMail::body),
                          column("created_at", &WaitingMail::createdAt),
                          column("expires_at", &WaitingMail::expiresAt),
                          column("next_try_at", &WaitingMail::nextTryAt),
                          column("tries", &WaitingMail::tries)};

const auto insertMail = columns.insert("mails", {});
const auto selectDue =
    columns.select("FROM mails WHERE next_try_at <= :now ORDER BY next_try_at, created_at, id LIMIT 1");

constexpr auto countMails = R"sql(
    SELECT COUNT(*) FROM mails
)sql";

constexpr auto takeMail = R"sql(
    UPDATE mails SET next_try_at = :until, tries = tries + 1 WHERE id = :id AND next_try_at = :before
)sql";

constexpr auto updateNextTry = R"sql(
    UPDATE mails SET next_try_at = :at WHERE id = :id
)sql";

constexpr auto deleteMail = R"sql(
    DELETE FROM mails WHERE id = :id
)sql";

constexpr auto deleteExpired = R"sql(
    DELETE FROM mails WHERE expires_at <= :now
)sql";

}

int MailRepository::count(Connection& connection)
{
    int count = 0;
    Query{connection, countMails}.into(count).next();
    return count;
}

void MailRepository::insert(Connection& connection, const WaitingMail& mail)
{
    Query query{connection, insertMail};
    columns.bind(query, mail);
    query.run();
}

std::optional<WaitingMail> MailRepository::due(Connection& connection, std::string_view now)
{
    Query query{connection, selectDue};
    return recordOf<WaitingMail>(query.bind("now", now), columns);
}

bool MailRepository::take(Connection& connection, const WaitingMail& mail, std::string_view until)
{
    Query query{connection, takeMail};
    return query.bind("until", until).bind("id", mail.id).bind("before", mail.nextTryAt).run() == 1;
}

void MailRepository::writeNextTry(Connection& connection, std::string_view id, std::string_view at)
{
    Query{connection, updateNextTry}.bind("at", at).bind("id", id).run();
}

void MailRepository::remove(Connection& connection, std::string_view id)
{
    Query{connection, deleteMail}.bind("id", id).run();
}

void MailRepository::removeExpired(Connection& connection, std::string_view now)
{
    Query{connection, deleteExpired}.bind("now", now).run();
}

void MailRepository::removeAll(Connection& connection)
{
    connection.execute("DELETE FROM mails");
}

}
