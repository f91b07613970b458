#include "LedgerService/Mail/Outbox.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/People/MailRepository.h"

namespace LedgerService {

bool Outbox::isFull(Connection& connection)
{
    return MailRepository::count(connection) >= mostWaiting;
}

void Outbox::put(Connection& connection, const Mail& mail, Instant now, std::chrono::seconds lifetime)
{
    if (isFull(connection))
        return;
    const auto stamp = LedgerDay::stamp(now);
    MailRepository::insert(connection, {.id = Random::identifier(),
                                        .recipient = mail.to,
                                        .locale = mail.locale,
                                        .subject = mail.subject,
                                        .body = mail.text,
                                        .createdAt = stamp,
                                        .expiresAt = LedgerDay::stamp(now + lifetime),
                                        .nextTryAt = stamp,
                                        .tries = 0});
}

}
