#include "LedgerService/testing/SampleBooks.h"

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

Member member(std::string id, std::string role, std::vector<AccountGrant> grants,
              std::vector<std::string> permissions = {})
{
    Member each;
    each.id = std::move(id);
    each.userID = "user-" + each.id;
    each.name = each.id;
    each.role = std::move(role);
    each.active = true;
    each.permissions = std::move(permissions);
    each.accountGrants = std::move(grants);
    return each;
}

Account account(std::string id, std::vector<std::string> currencies = {"IDR"})
{
    Account each;
    each.id = std::move(id);
    each.name = each.id;
    each.currencies = std::move(currencies);
    return each;
}

AccountGrant every(std::string accountID)
{
    return {std::move(accountID), {AccountGrant::knownActions.begin(), AccountGrant::knownActions.end()}};
}

TransactionInput input(std::string_view kind, std::int64_t amountMinor)
{
    TransactionInput each;
    each.kind = kind;
    each.date = "2026-03-10";
    each.currency = "IDR";
    each.amountMinor = amountMinor;
    each.idempotencyKey = "key";
    return each;
}

void mustRecord(Books& books, const TransactionInput& each, std::string entryID)
{
    require(books.record(each, SampleBooks::actBy("mira", std::move(entryID))).has_value(), "the sample is valid");
}

}

Books SampleBooks::books()
{
    Books books;
    books.settings = FinancialSettings{.revision = 1,
                                       .bookkeepingStartDate = "2026-01-01",
                                       .initializationMode = {},
                                       .initializedAt = {},
                                       .featuresConfigured = {}};
    auto hidden = account("hidden");
    auto closed = account("closed");
    auto drawer = account("float");
    drawer.purpose = AccountPurpose::employee;
    drawer.operatorMemberID = "rudi";
    drawer.returnAccountID = "vault";
    auto refunds = account("refunds");
    refunds.purpose = AccountPurpose::refund;
    refunds.operatorMemberID = "mira";
    books.accounts = {
        account("bank", {"IDR", "USD"}), account("branch"), drawer, refunds, account("vault"), closed, hidden};
    books.members = {
        member("mira", "finance",
               {every("bank"),
                every("branch"),
                every("refunds"),
                every("vault"),
                every("closed"),
                {"float", {"transferIn"}}}),
        member("rudi", "employee", {every("float"), {"branch", {"view"}}}),
        member("guest", "partner", {}, {"viewCompany"}),
        member("gone", "owner", {every("bank")}),
    };
    books.members.back().active = false;
    for (const auto& [id, kind] : {std::pair{"sales", "income"}, {"rent", "expense"}, {"fax", "expense"}})
        books.categories.push_back({id, kind, {}, "tag", false, {}, {}, {}, {}});
    books.categories.back().archived = true;
    for (const auto* id : {"linked", "free"})
        books.attachments.push_back({id, {}, "receipt.pdf", "application/pdf", 1'024, "2026-01-05T08:00:00.000Z"});

    auto bank = opening(920'000);
    bank.targetAccountID = "bank";
    mustRecord(books, bank, "opening-bank");
    auto dollars = opening(500);
    dollars.targetAccountID = "bank";
    dollars.currency = "USD";
    mustRecord(books, dollars, "opening-dollars");
    auto holder = opening(50'000);
    holder.targetAccountID = "refunds";
    mustRecord(books, holder, "opening-refunds");
    auto sale = income(80'000);
    sale.attachmentIDs = {"linked"};
    mustRecord(books, sale, "sale");
    books.accounts[5].archived = true;
    return books;
}

BookAct SampleBooks::actBy(std::string memberID, std::string entryID)
{
    return {std::move(entryID), std::move(memberID), "2026-03-10", "2026-03-10T09:30:00.000Z"};
}

TransactionInput SampleBooks::income(std::int64_t amountMinor)
{
    auto each = input(EntryKind::income, amountMinor);
    each.targetAccountID = "bank";
    each.categoryID = "sales";
    return each;
}

TransactionInput SampleBooks::expense(std::int64_t amountMinor)
{
    auto each = input(EntryKind::expense, amountMinor);
    each.sourceAccountID = "bank";
    each.categoryID = "rent";
    return each;
}

TransactionInput SampleBooks::transfer(std::int64_t amountMinor)
{
    auto each = input(EntryKind::transfer, amountMinor);
    each.sourceAccountID = "bank";
    each.targetAccountID = "branch";
    return each;
}

TransactionInput SampleBooks::funding(std::int64_t amountMinor)
{
    auto each = transfer(amountMinor);
    each.targetAccountID = "float";
    each.transferPurpose = TransferPurpose::funding;
    return each;
}

TransactionInput SampleBooks::returning(std::int64_t amountMinor)
{
    auto each = transfer(amountMinor);
    each.sourceAccountID = "float";
    each.targetAccountID = "vault";
    each.transferPurpose = TransferPurpose::returning;
    return each;
}

TransactionInput SampleBooks::exchange(std::int64_t amountMinor, std::int64_t targetAmountMinor)
{
    auto each = input(EntryKind::exchange, amountMinor);
    each.sourceAccountID = "bank";
    each.targetAccountID = "bank";
    each.targetCurrency = "USD";
    each.targetAmountMinor = targetAmountMinor;
    return each;
}

TransactionInput SampleBooks::refund(std::int64_t amountMinor)
{
    auto each = input(EntryKind::refund, amountMinor);
    each.sourceAccountID = "refunds";
    each.originalTransactionID = "sale";
    return each;
}

TransactionInput SampleBooks::opening(std::int64_t amountMinor)
{
    auto each = input(EntryKind::opening, amountMinor);
    each.date = "2026-01-01";
    each.targetAccountID = "branch";
    return each;
}

Reversal SampleBooks::reversal()
{
    return {"Typed twice", "key", "2026-03-10"};
}

}
