#include "LedgerService/Operations/People/CreateCompany.h"

#include <chrono>
#include <iostream>
#include <string_view>

#include <fmt/ranges.h>
#include <termios.h>
#include <unistd.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Settings/CompanySettings.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/PasswordRule.h"
#include "LedgerService/Commands/NewCompany.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/TimeZone.h"

namespace LedgerService {

namespace {

/// Keeps what is typed off the screen while it lives.
class HiddenTyping {
public:
    HiddenTyping()
    {
        m_changed = tcgetattr(STDIN_FILENO, &m_before) == 0;
        auto hidden = m_before;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        m_changed = m_changed && tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden) == 0;
    }
    ~HiddenTyping()
    {
        if (m_changed)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

private:
    termios m_before{};
    bool m_changed = false;
};

std::string ask(std::string_view question)
{
    fmt::print(stderr, "{}", question);
    std::string line;
    std::getline(std::cin, line);
    fmt::print(stderr, "\n");
    return line;
}

CompanyFounding foundingOf(const CreateCompany::Order& order)
{
    const NewCompany company{.name = order.companyName,
                             .countries = order.countries,
                             .timeZone = order.timeZone,
                             .approvalStatus = ApprovalStatus::approved,
                             .createdAt = LedgerDay::stamp(std::chrono::system_clock::now())};
    return company.foundedBy({.userID = Random::identifier(),
                              .name = order.ownerName,
                              .email = order.ownerEmail,
                              .locale = std::string{AppLanguage::locale(order.locale)},
                              .passwordHash = Password::hash(order.password)});
}

}

std::expected<std::string, std::string> CreateCompany::carryOut(Connection& connection, const Order& order)
{
    if (!Naming::isName(order.companyName) || !Naming::isName(order.ownerName))
        return std::unexpected(fmt::format("names have 1 to {} characters on one line", Naming::maximumName));
    if (!Naming::isEmail(UserRepository::normalized(order.ownerEmail)))
        return std::unexpected("the e-mail address is not one");
    if (!CompanySettings::areCountries(order.countries))
        return std::unexpected("countries are codes of two capital letters, such as ID or VN, each once");
    if (order.timeZone && !TimeZone::isKnown(*order.timeZone))
        return std::unexpected("the time zone is not known; zones have names such as Asia/Jakarta");
    if (!AppLanguage::isSupported(order.locale))
        return std::unexpected(fmt::format("the languages are {}", fmt::join(AppLanguage::supportedLocales, ", ")));
    if (!Password::isAcceptable(order.password))
        return std::unexpected(fmt::format("a password has at least {} characters", PasswordRule::minimumLength));
    auto founding = foundingOf(order);
    founding.origin = AuditOrigin::operating;
    return Anew::onConflict([&]() -> std::expected<std::string, std::string> {
        Transaction transaction{connection, Transaction::Mode::writing};
        if (UserRepository::findByEmail(connection, order.ownerEmail))
            return std::unexpected("somebody is registered with this e-mail address already");
        founding.write(connection);
        transaction.commit();
        return founding.company.id;
    });
}

std::expected<std::string, std::string> CreateCompany::readPassword()
{
    if (isatty(STDIN_FILENO) == 0) {
        std::string line;
        std::getline(std::cin, line);
        if (line.ends_with('\r')) // of a file from a system with other line ends
            line.pop_back();
        return line;
    }
    const HiddenTyping hidden;
    auto password = ask("Password of the owner: ");
    if (ask("Once more: ") != password)
        return std::unexpected("the two passwords differ");
    return password;
}

}
