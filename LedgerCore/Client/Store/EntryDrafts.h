#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"

class LedgerStore;

/// The entries that each person began in each company and did not record. They are kept in memory at once and, a little
/// later and beside whatever else goes on, at the service, where the next start of the program finds them; nothing of
/// them is kept on this machine. Where the service keeps no drafts, they live as long as the program.
class EntryDrafts final : public QObject {
    Q_OBJECT
public:
    /// How long the service is not told after a first change, and after a failure to tell it.
    struct Patience {
        std::chrono::milliseconds typing{2'000};
        std::chrono::milliseconds failure{15'000};
    };

    explicit EntryDrafts(LedgerStore& store);
    void setPatience(Patience patience) { m_patience = patience; }

    /// What the signed-in member is typing, in the place of what was typed in this program before. Nothing here does
    /// anything while nobody is signed in.
    void keep(TransactionDraft entry, std::string locale);
    /// It goes off as `input`: from now on it is the store that keeps it, and the service is told so at once.
    void keepSending(TransactionDraft entry, std::string locale, TransactionInput input);
    /// The entry of this key is recorded; the service has forgotten its draft by itself.
    void settle(const std::string& key);
    /// A person gave it up.
    void discard(const std::string& key);
    /// A person goes on with what another program has kept.
    void takeOver(const std::string& key);
    /// A person ends the program and agrees that what was begun here last may go with it, where nothing else keeps it.
    void letGo();

    /// What was begun in this program last, of the signed-in member in the open company.
    [[nodiscard]] std::optional<EntryDraft> own() const;
    /// Whether this member began something here, also one who is signed out.
    [[nodiscard]] bool hasBegun(const MemberIdentity& member) const;
    /// What another program has left and nobody has decided about, the latest first.
    [[nodiscard]] std::optional<EntryDraft> left() const;
    /// Whether something typed could not be kept at the service so far.
    [[nodiscard]] bool isBehind() const { return m_isBehind; }

    /// Whether the program's end would lose something typed: what a service that keeps drafts was not told of somebody
    /// who is signed out, or could not be told, and what was begun at a service that keeps none.
    [[nodiscard]] bool wouldLose() const;

    /// Whether the service keeps the draft of this key, or is about to be told of it.
    [[nodiscard]] bool isSafe(const MemberIdentity& whose, const std::string& key) const;

    /// Tells the service at once what it does not know yet.
    void hasten() { tell(); }
    /// The same, and ends when it has been tried. The store must outlive it.
    QCoro::Task<void> flush();

Q_SIGNALS:
    /// There are others, or none any more.
    void changed();
    void isBehindChanged();
    /// The service has told what an earlier program had left.
    void arrived();
    /// Another program goes on with the draft of this key: here it needs another one.
    void takenOver(const std::string& key);
    void idle();

private:
    struct Forgotten {
        std::optional<std::string> takenFrom;
    };
    using Wish = std::variant<DraftKeep, Forgotten>; // what the service is to be told about a key

    /// What is held for one member of one company at one service.
    struct Shelf {
        std::optional<EntryDraft> own;
        std::vector<EntryDraft> left;
        std::map<std::string, Wish> wishes; // by key
        std::set<std::string> known;        // keys that the service may know
        std::map<std::string, std::string> takenFrom;
        bool isLetGo = false;   // the own one may be lost
        bool isLoaded = false;  // since the last sign-in
        bool isServed = false;  // the service has told drafts once
        bool isRefused = false; // the service keeps no drafts
    };

    [[nodiscard]] Shelf* shelf();
    [[nodiscard]] const Shelf* shelf() const;
    [[nodiscard]] bool isKeptBy(const Shelf& shelf) const;
    void adoptSnapshot();
    void load();
    void adopt(const MemberIdentity& whose, const EntryDraftList& loaded);
    void wish(Shelf& shelf, const std::string& key, Wish wish, std::chrono::milliseconds delay);
    void forget(Shelf& shelf, const std::string& key);
    [[nodiscard]] static std::optional<std::string> takenFrom(const Shelf& shelf, const std::string& key);
    [[nodiscard]] DraftKeep keeping(const Shelf& shelf, const EntryDraft& draft) const;
    void tell();
    void told(const MemberIdentity& whose, const std::string& key, const Wish& wish, const Result<DraftKept>& reply);
    void putOff(Shelf& shelf, const std::string& key, const Wish& wish);
    void setBehind(bool isBehind);

    LedgerStore& m_store;
    std::string m_writer; // of this program
    Patience m_patience;
    std::map<MemberIdentity, Shelf> m_shelves;
    std::optional<MemberIdentity> m_whose; // for whom the books are open
    QTimer m_timer;
    bool m_isTelling = false;
    bool m_isLoading = false;
    bool m_isBehind = false;
};
