#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerService/Access/EntryDisclosure.h"
#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"

namespace LedgerService {

class Connection;
class Database;

/// Which entries a member sees: those with a leg on an account that the member sees.
class VisibleSets {
public:
    VisibleSets(const std::vector<AccountSet>& sets, const std::vector<Account>& visible);

    [[nodiscard]] bool contains(int set) const;
    [[nodiscard]] std::int64_t entryCount() const { return m_entryCount; }
    [[nodiscard]] std::int64_t receiptCount() const { return m_receiptCount; }

private:
    std::vector<bool> m_visible; // by set id
    std::int64_t m_entryCount = 0;
    std::int64_t m_receiptCount = 0;
};

/// Whose snapshot, and of which state.
struct SnapshotScope {
    std::string companyID;
    std::string memberID;
    CompanyState state;
    VisibleSets sets;
    EntryDisclosure disclosure;

    /// The receipts that the member got to see after this change.
    [[nodiscard]] AttachmentView receiptsAfter(std::int64_t change, std::int64_t last) const;
};

/// Adds elements of a JSON array to a text.
class JsonElements {
public:
    /// `any` tells whether the array has an element already, and goes on telling it.
    JsonElements(std::string& text, bool& any) : m_text(text), m_any(any) {}

    void add(std::string_view element);
    /// Adds an entry as the reader may see it.
    void add(std::string_view entry, const EntryDisclosure& disclosure);

private:
    std::string& m_text;
    bool& m_any;
};

/// The long lists of a whole snapshot, made block by block while the client takes them. Between two blocks nothing is
/// held but the place, and no transaction is open: a slow reader hinders nobody. All blocks show the scope's state,
/// whatever is recorded meanwhile.
class SnapshotBlocks {
public:
    /// `tail` is the text from the end of the receipts on. The blocks begin after the opening bracket of the entries.
    SnapshotBlocks(Database& database, SnapshotScope scope, std::string tail);

    /// The next block; empty when the snapshot is complete. Throws when the company is there no more.
    std::string next();

private:
    enum class Stage { entries, receipts, done };
    struct Place {
        Stage stage = Stage::entries;
        std::int64_t at = 0; // the change up to which all is sent, in this stage
        bool any = false;    // whether the list has an element already
    };

    std::string make(Connection& connection);
    void requireCompany(Connection& connection) const;
    void addEntries(Connection& connection, std::string& block);
    void addReceipts(Connection& connection, std::string& block);

    Database& m_database;
    SnapshotScope m_scope;
    std::string m_tail;
    Place m_place;
    std::size_t m_bytes = 0; // of the blocks so far
};

}
