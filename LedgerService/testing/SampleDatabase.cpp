#include "LedgerService/testing/SampleDatabase.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

void makeSampleDatabase(const std::string& name, const std::function<void(Connection&)>& beside)
{
    const auto opened = Database::open(name);
    require(opened.has_value(), opened ? std::string{} : opened.error());
    const auto loan = (*opened)->borrow();
    Transaction transaction{*loan, Transaction::Mode::writing};
    foundSample(*loan, "sample");
    beside(*loan);
    transaction.commit();
}

}
