#include "LedgerService/Receipts/LooseReceipts.h"

#include <string>
#include <vector>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// The files of the rows stay for a while: a backup that runs may have copied the rows already.
std::size_t removeRows(Database& database, const ReceiptFolder& folder, std::string_view before)
{
    const auto loan = database.borrow();
    const auto turn = database.queueToWrite();
    return Anew::onConflict([&] {
        Transaction transaction{*loan, turn.until()};
        const auto removed = AttachmentRepository::removeLoose(*loan, before);
        for (const auto& digest : removed) {
            if (!digest.empty())
                folder.touch(digest);
        }
        transaction.commit();
        return removed.size();
    });
}

std::vector<std::string> unnamed(Database& database, const ReceiptFolder& folder)
{
    std::vector<std::string> digests;
    const auto loan = database.borrow();
    folder.eachOlderThan(LooseReceipts::graceOfFiles, [&](const std::string& digest) {
        if (!Anew::onConflict([&] { return AttachmentRepository::isNamed(*loan, digest); }))
            digests.push_back(digest);
    });
    return digests;
}

/// Looks again while nobody else writes: no row that names the file is added meanwhile.
bool removeFile(Database& database, const ReceiptFolder& folder, const std::string& digest)
{
    const auto loan = database.borrow();
    const auto turn = database.queueToWrite();
    return Anew::onConflict([&] {
        const Transaction transaction{*loan, turn.until()};
        if (AttachmentRepository::isNamed(*loan, digest))
            return false;
        folder.remove(digest);
        return true;
    });
}

}

LooseReceipts::Swept LooseReceipts::sweep(Database& database, const ReceiptFolder& folder,
                                          std::chrono::system_clock::time_point now)
{
    Swept swept;
    const auto before = LedgerDay::stamp(now - lifetime);
    for (std::size_t removed = 1; removed > 0; swept.receipts += removed)
        removed = removeRows(database, folder, before);
    for (const auto& digest : unnamed(database, folder))
        swept.files += removeFile(database, folder, digest) ? 1 : 0;
    return swept;
}

}
