#pragma once

#include <string>
#include <string_view>

#include "LedgerService/Mail/Mail.h"

class WordTable;

namespace LedgerService {

/// What the service writes to people, in their language. What a stranger has typed into a form is never sent to an
/// address that nobody has proved to own.
namespace MailTexts {

/// A text for each mail, and one with "Subject" after its key.
const WordTable& table();

/// To whom, and in which language.
struct Reader {
    std::string email;
    std::string locale; // a tag of `AppLanguage`
};

/// The one-time code for joining a company.
Mail joinCode(const Reader& reader, std::string_view code, std::string_view companyName);

/// The one-time code for a new password.
Mail resetCode(const Reader& reader, std::string_view code);

/// That the password was changed, and what to do if it was somebody else.
Mail passwordChanged(const Reader& reader);

/// That somebody is invited. The code itself comes from the inviter: mail alone opens no company.
Mail invitation(const Reader& reader, std::string_view companyName, std::string_view inviterName);

Mail applicationReceived(const Reader& reader);
Mail applicationApproved(const Reader& reader, std::string_view companyName);
Mail applicationRejected(const Reader& reader, std::string_view companyName);

}

}
