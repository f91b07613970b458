#include "LedgerService/Storage/Rows/People/UserRepository.h"

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Storage/Sql/Columns.h"
#include "LedgerService/Storage/Sql/LetterCase.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("id", &User::id),
                          column("email", &User::email),
                          column("name", &User::name),
                          column("locale", &User::locale),
                          column("password_hash", &User::passwordHash),
                          column("created_at", &User::createdAt),
                          column("activated_at", &User::activatedAt),
                          column("deactivated_at", &User::deactivatedAt),
                          column("current_company_id", &User::currentCompanyID)};

const auto selectUser = columns.select("FROM users WHERE id = :user");
const auto selectByEmail = columns.select("FROM users WHERE email = :email");
const auto selectUsers = columns.select("FROM users ORDER BY email");
const auto insertUser = columns.insert("users", {});

constexpr auto updateCurrentCompany = R"sql(
    UPDATE users SET current_company_id = :company WHERE id = :user
)sql";

constexpr auto updateName = R"sql(
    UPDATE users SET name = :name WHERE id = :user
)sql";

constexpr auto updateLocale = R"sql(
    UPDATE users SET locale = :locale WHERE id = :user
)sql";

constexpr auto updatePassword = R"sql(
    UPDATE users SET password_hash = :hash, activated_at = COALESCE(activated_at, :now) WHERE id = :user
)sql";

constexpr auto removePassword = R"sql(
    UPDATE users SET password_hash = NULL WHERE id = :user
)sql";

constexpr auto updateDeactivated = R"sql(
    UPDATE users SET deactivated_at = :at WHERE id = :user
)sql";

}

std::string UserRepository::normalized(std::string_view email)
{
    return LetterCase::lower(TextFold::trimmed(email));
}

std::optional<User> UserRepository::find(Connection& connection, std::string_view userID)
{
    Query query{connection, selectUser};
    return recordOf<User>(query.bind("user", userID), columns);
}

std::optional<User> UserRepository::findByEmail(Connection& connection, std::string_view email)
{
    Query query{connection, selectByEmail};
    return recordOf<User>(query.bind("email", normalized(email)), columns);
}

std::vector<User> UserRepository::all(Connection& connection)
{
    Query query{connection, selectUsers};
    return recordsOf<User>(query, columns);
}

void UserRepository::insert(Connection& connection, const User& user)
{
    auto kept = user;
    kept.email = normalized(user.email);
    Query query{connection, insertUser};
    columns.bind(query, kept);
    query.run();
}

void UserRepository::writeCurrentCompany(Connection& connection, std::string_view userID, std::string_view companyID)
{
    Query{connection, updateCurrentCompany}.bind("company", companyID).bind("user", userID).run();
}

void UserRepository::writeName(Connection& connection, std::string_view userID, std::string_view name)
{
    Query{connection, updateName}.bind("name", name).bind("user", userID).run();
}

void UserRepository::writeLocale(Connection& connection, std::string_view userID, std::string_view locale)
{
    Query{connection, updateLocale}.bind("locale", locale).bind("user", userID).run();
}

void UserRepository::writePassword(Connection& connection, std::string_view userID, std::string_view passwordHash,
                                   std::string_view now)
{
    Query{connection, updatePassword}.bind("hash", passwordHash).bind("now", now).bind("user", userID).run();
}

void UserRepository::clearPassword(Connection& connection, std::string_view userID)
{
    Query{connection, removePassword}.bind("user", userID).run();
}

void UserRepository::writeDeactivated(Connection& connection, std::string_view userID,
                                      const std::optional<std::string>& at)
{
    Query{connection, updateDeactivated}.bind("at", at).bind("user", userID).run();
}

}
