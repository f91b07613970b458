#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

/// The code that an inviter hands to the invited person: 80 random bits in a form that can be read out and typed.
namespace InvitationCode {

/// A new one, such as "3F9A0-C21D7-08B4E-96F5A".
std::string make();

/// What the service stores and looks codes up by; the same for whatever case and separators a code is typed with.
std::string hash(std::string_view code);

}

}
