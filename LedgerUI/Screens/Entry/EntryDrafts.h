#pragma once

#include <map>
#include <optional>
#include <string>

#include <QObject>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Entries/TransactionDraft.h"

class LedgerStore;

/// The last entry that each person began in each company and did not record: left by Cancel, or taken away by the end
/// of a session. It lives as long as the program; nothing of it is kept on this machine.
class EntryDrafts final : public QObject {
    Q_OBJECT
public:
    /// Those of this store, for as long as it lives.
    static EntryDrafts& of(LedgerStore& store);

    /// In the place of the one before. Does nothing while nobody is signed in, as the two below.
    void keep(TransactionDraft draft, std::string locale);
    void forget();
    /// Of the signed-in member in the open company, its amounts in the separators of `locale`.
    [[nodiscard]] std::optional<TransactionDraft> kept(const std::string& locale) const;

Q_SIGNALS:
    /// There is one now, or none any more.
    void changed();

private:
    explicit EntryDrafts(LedgerStore& store);

    struct Kept {
        TransactionDraft draft;
        std::string locale; // that its amounts were typed in
    };

    LedgerStore& m_store;
    std::map<MemberIdentity, Kept> m_kept;
};
