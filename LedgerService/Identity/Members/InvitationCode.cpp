#include "LedgerService/Identity/Members/InvitationCode.h"

#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

constexpr std::size_t digits = 20; // of 4 bits each
constexpr std::size_t digitsOfGroup = 5;
constexpr std::size_t randomBytes = 32;
/// What is looked at of a typed code: a longer one is none.
constexpr std::size_t mostTyped = 64;

char upper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool separates(char each)
{
    return each == '-' || each == ' ' || each == '\t' || each == '\r' || each == '\n';
}

}

std::string InvitationCode::make()
{
    const auto random = Random::digest(Random::text(randomBytes));
    std::string code;
    for (std::size_t at = 0; at < digits; ++at) {
        if (at > 0 && at % digitsOfGroup == 0)
            code += '-';
        code += upper(random[at]);
    }
    return code;
}

std::string InvitationCode::hash(std::string_view code)
{
    std::string plain;
    for (const char each : code.substr(0, mostTyped)) {
        if (!separates(each))
            plain += upper(each) == 'O' ? '0' : upper(each);
    }
    return Random::digest("invitation:" + plain);
}

}
