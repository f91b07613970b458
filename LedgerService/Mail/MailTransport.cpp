#include "LedgerService/Mail/MailTransport.h"

#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerService/Mail/SmtpRelay.h"
#include "LedgerService/Mail/SpoolFolder.h"

namespace LedgerService {

std::expected<std::unique_ptr<MailTransport>, std::string> MailSettings::transport() const
{
    if (!Naming::isEmail(sender))
        return std::unexpected("the sender of mail is no e-mail address");
    if (!smtp.url.empty()) {
        if (auto refused = SmtpRelay::whyNot(smtp))
            return std::unexpected(*std::move(refused));
        return std::make_unique<SmtpRelay>(smtp, sender);
    }
    if (spoolFolder.empty())
        return nullptr;
    auto folder = std::make_unique<SpoolFolder>(spoolFolder);
    if (auto refused = folder->whyNotReady())
        return std::unexpected(*std::move(refused));
    return folder;
}

}
