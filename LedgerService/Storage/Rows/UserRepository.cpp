#include "LedgerService/Storage/Rows/UserRepository.h"

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectUser = R"sql(
    SELECT id, email, password_hash, current_company_id FROM users WHERE email = :email
)sql";

constexpr auto insertUser = R"sql(
    INSERT INTO users (id, email, password_hash, created_at) VALUES (:id, :email, :hash, :created)
)sql";

constexpr auto updateCurrentCompany = R"sql(
    UPDATE users SET current_company_id = :company WHERE id = :user
)sql";

constexpr auto updatePassword = R"sql(
    UPDATE users SET password_hash = :hash WHERE id = :user
)sql";

}

std::string UserRepository::normalized(std::string_view email)
{
    std::string address{TextFold::trimmed(email)};
    for (auto& each : address) {
        if (each >= 'A' && each <= 'Z')
            each = static_cast<char>(each - 'A' + 'a');
    }
    return address;
}

std::optional<User> UserRepository::findByEmail(Connection& connection, std::string_view email)
{
    User user;
    Query query{connection, selectUser};
    query.bind("email", normalized(email)).into(user.id).into(user.email).into(user.passwordHash);
    query.into(user.currentCompanyID);
    return query.next() ? std::optional{user} : std::nullopt;
}

void UserRepository::insert(Connection& connection, const User& user, std::string_view createdAt)
{
    Query{connection, insertUser}
        .bind("id", user.id)
        .bind("email", normalized(user.email))
        .bind("hash", user.passwordHash)
        .bind("created", createdAt)
        .run();
}

void UserRepository::writeCurrentCompany(Connection& connection, std::string_view userID, std::string_view companyID)
{
    Query{connection, updateCurrentCompany}.bind("company", companyID).bind("user", userID).run();
}

void UserRepository::writePasswordHash(Connection& connection, std::string_view userID, std::string_view passwordHash)
{
    Query{connection, updatePassword}.bind("hash", passwordHash).bind("user", userID).run();
}

}
