#include "LedgerService/Identity/Sessions/SignOut.h"

#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

std::optional<Refusal> SignOut::end(const Service& service, std::string_view token, std::string_view now)
{
    const auto hash = Token::hash(token);
    const auto loan = service.database.borrow();
    const auto owner = Anew::onConflict([&] { return SessionRepository::find(*loan, hash, now); });
    if (!owner)
        return Authentication::unauthorized();
    const auto turn = service.database.queueToWrite();
    AuditRecord record;
    record.at = now;
    record.memberID = owner->memberID;
    record.origin = service.origin;
    record.kind = AuditKind::signOut;
    Anew::onConflict([&] {
        Transaction transaction{*loan, turn.until()};
        SessionRepository::revoke(*loan, hash, now);
        AuditTrail::append(*loan, owner->companyID, record);
        transaction.commit();
    });
    return std::nullopt;
}

}
