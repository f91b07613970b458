#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "LedgerService/Mail/Mail.h"

namespace LedgerService {

/// Letters as they travel: header and body in the form that every mail server takes. Whatever a letter says, it can
/// neither add a line to its header nor end its body.
namespace MailMessage {

/// `sender` is an address; `name` makes the message's id unique.
std::string of(const Mail& mail, std::string_view sender, std::chrono::system_clock::time_point instant,
               std::string_view name);

/// A header's text: as it is when that is safe, else as encoded words of at most 75 characters a line.
std::string headerText(std::string_view text);

/// Quoted-printable: lines of at most 76 ASCII characters that end in CRLF.
std::string body(std::string_view text);

}

}
