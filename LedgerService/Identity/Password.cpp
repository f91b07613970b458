#include "LedgerService/Identity/Password.h"

#include <array>
#include <stdexcept>

#include <sodium.h>

#include "LedgerCore/Domain/Text/PasswordRule.h"
#include "LedgerService/Random.h"

namespace LedgerService {

bool Password::isAcceptable(std::string_view password)
{
    return !PasswordRule::whyNot(password);
}

std::string Password::hash(std::string_view password)
{
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    const auto failed = crypto_pwhash_str(hash.data(), password.data(), password.size(),
                                          crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE);
    if (failed != 0)
        throw std::runtime_error("not enough memory to hash a password");
    return hash.data();
}

bool Password::matches(std::string_view password, const std::string& hash)
{
    return password.size() <= PasswordRule::maximumBytes &&
           crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

void Password::pretendToMatch(std::string_view password)
{
    static const auto nobodys = hash(Random::identifier());
    static_cast<void>(matches(password, nobodys));
}

}
