#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Http/ServiceConnection.h"
#include "LedgerCore/Client/Operations/AccessOperations.h"
#include "LedgerCore/Client/Operations/AccountOperations.h"
#include "LedgerCore/Client/Operations/BookCommandOperations.h"
#include "LedgerCore/Client/Operations/CategoryOperations.h"
#include "LedgerCore/Client/Operations/DraftOperations.h"
#include "LedgerCore/Client/Operations/ExportOperations.h"
#include "LedgerCore/Client/Operations/MemberOperations.h"
#include "LedgerCore/Client/Operations/SessionRunner.h"
#include "LedgerCore/Client/Operations/TemplateOperations.h"
#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Client/Session/SignedInRights.h"
#include "LedgerCore/Client/Snapshots/SessionOpening.h"
#include "LedgerCore/Client/Store/StoreProperties.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

class AttachmentCache;
class Clock;
class EntryDrafts;
class EntryTemplates;
class IdentifierSource;
class LanguageDefaults;
class SessionCredentialStore;
struct HeldBooks;
struct LoadedSnapshot;
struct SavedSession;

/// The one stateful object of the client: session, snapshot and what the interface shows meanwhile. Screens observe
/// it and call its operations; each operation is one request, and one runs at a time. Main thread only.
class LedgerStore final : public StoreProperties,
                          private SessionRunner,
                          public SignedInRights,
                          public AccessOperations,
                          public AccountOperations,
                          public BookCommandOperations,
                          public CategoryOperations,
                          public DraftOperations,
                          public ExportOperations,
                          public MemberOperations,
                          public TemplateOperations {
    Q_OBJECT
public:
    /// What the store reaches outside the process through. Shared with tests' fakes; must outlive the store.
    struct Environment {
        SessionCredentialStore& credentials;
        LanguageDefaults& languageDefaults;
        Clock& clock;
        IdentifierSource& identifiers;
        TransferLimits limits = {};
    };

    LedgerStore(std::string baseURL, Environment environment, QObject* parent = nullptr);
    ~LedgerStore() override;

    [[nodiscard]] const std::string& serverURL() const { return m_connection.address(); }

    /// The tag of the interface language in force: the chosen one, else the system's.
    [[nodiscard]] std::string locale() const override;
    /// Today's day here, by the store's clock.
    [[nodiscard]] std::string today() const override;
    /// A fresh idempotency key.
    [[nodiscard]] std::string newIdentifier();

    /// The entry of the signed-in member in the open company whose recording was not confirmed, or was not tried
    /// because a session had ended. `postTransaction` keeps and forgets it by itself; it outlives sessions.
    [[nodiscard]] std::optional<KeptEntry> keptEntry() const;
    /// Keeps an entry of the signed-in member. `since` is the stamp of when it was kept first; an empty one is now.
    void keepEntry(TransactionInput input, bool outcomeUnknown, const std::string& since = {});
    /// The person gave a kept entry up, or something else keeps it.
    void forgetEntry(const std::string& idempotencyKey);
    /// The same for the oldest command on capital or dividends; `submitCapital` and `submitDividend` keep and forget
    /// it.
    [[nodiscard]] std::optional<KeptSectionCommand> keptSectionCommand() const;
    /// Keeps a command of the signed-in member that was certainly not carried out; `since` as above.
    void keepSectionCommand(SectionCommand command, std::string since = {});
    /// The person gave a kept command up, or something else keeps it.
    void forgetSectionCommand(const std::string& idempotencyKey);
    /// The same of a member whose session may be over.
    void forgetSectionCommand(const MemberIdentity& member, const std::string& idempotencyKey);
    /// All that is kept of the signed-in member in the open company.
    [[nodiscard]] KeptRequests keptRequests() const;
    /// All that is kept of this one.
    [[nodiscard]] KeptRequests keptRequests(const MemberIdentity& member) const { return m_kept.requests(member); }
    /// Whether anything of anybody may have been recorded without a confirmation.
    [[nodiscard]] bool hasUnconfirmed() const { return m_kept.hasUnconfirmed(); }
    /// Whether the program's end would lose something of anybody that was not tried because a session had ended.
    [[nodiscard]] bool wouldLoseUntried();
    /// Who is signed in, and where; nobody without a snapshot.
    [[nodiscard]] std::optional<MemberIdentity> signedIn() const;

    /// The request that the next reversal of this entry will send again, from an earlier attempt that did not succeed.
    [[nodiscard]] std::optional<KeptReversal> keptReversal(const std::string& entryID) const;

    /// Publishes it when the choice cannot be kept for the next start.
    void setAppLanguage(std::optional<std::string> code);
    /// Heeded only while signed out and idle.
    void setServerURL(std::string address);
    /// Whether a command of the signed-in member was sent and is not answered.
    [[nodiscard]] bool awaitsChange() const
    {
        return m_snapshot && (m_connection.awaitsChange() || m_opening.isAwaited());
    }
    /// Whether the service of the open company keeps more than the books: one of our own kind, which tags snapshots.
    [[nodiscard]] bool keepsMoreThanBooks() const { return m_snapshot && !m_snapshotTag.empty(); }
    /// What is kept there beside the books. Each begins to be looked after when it is first asked for.
    [[nodiscard]] EntryTemplates& templates();
    [[nodiscard]] EntryDrafts& drafts();
    /// Says it in `errorMessage`, and below it what it means for the person; what was cancelled is not worth a word.
    void publish(const Failure& failure, const std::string& meaning = {});
    /// Clears `errorMessage` and `noticeMessage`.
    void dismissMessages();
    /// Gives up what a person waits for; it ends as `Cancelled`. A session that the service opens nevertheless is
    /// ended.
    void cancel();

    /// What the user reads about a failure, in `locale` or else the language in force.
    [[nodiscard]] std::string friendly(const Failure& failure, std::optional<std::string> locale = {}) const;
    /// Runs a screen's own work and publishes its failure.
    QCoro::Task<void> perform(std::function<QCoro::Task<Result<void>>()> work);

    QCoro::Task<Result<void>> refresh(bool publishError);
    /// Does nothing while another operation runs.
    QCoro::Task<Result<void>> refreshFromUser();
    /// Reloads without `isBusy` and without a message, except that of a session that ended. Does nothing while an
    /// operation runs and gives way to one that begins.
    QCoro::Task<Result<void>> refreshQuietly();
    /// Signs in with the kept session, once per process.
    QCoro::Task<Result<void>> restoreSession();
    /// Signs out at once and succeeds even when the service cannot be told.
    QCoro::Task<Result<void>> logout();
    /// The last call before the program ends: a draft that was typed last is kept, and a session that is not kept for
    /// the next start is ended at the service, so that it does not lie about there. Waits for the service to learn of
    /// it, and of every session ended before.
    QCoro::Task<void> leave();
    /// Gives the identifier of the recorded entry, or an empty one where the service does not tell it. That the entry
    /// could not be reloaded is published.
    QCoro::Task<Result<std::string>> postTransaction(TransactionInput input, bool publishError);
    /// Records one entry after the other until one fails; `progress` is told how many are confirmed. Where the session
    /// ends on the way, its message says that as well: nobody else may be left to say it.
    QCoro::Task<Result<void>> importTransactions(std::vector<TransactionInput> inputs,
                                                 std::function<void(std::size_t)> progress);
    /// Repeats the kept request of an earlier attempt on the same entry as it stood.
    QCoro::Task<Result<void>> reverseTransaction(std::string id, std::string reason);

    // Where `publishError` is false, the screen itself says what failed.
    QCoro::Task<Result<Attachment>> uploadAttachment(std::string name, std::string mime, std::string data,
                                                     bool publishError = true);
    QCoro::Task<Result<void>> attach(std::string entryID, std::vector<std::string> attachmentIDs,
                                     bool publishError = true);
    /// Gives the private file that holds the receipt; sends nothing for one that was downloaded before.
    QCoro::Task<Result<std::filesystem::path>> downloadAttachment(std::string id, bool publishError = true);
    /// What is known of a receipt of the books or one uploaded in this session; null for others.
    [[nodiscard]] const Attachment* attachment(const std::string& id) const;
    void refreshAttachmentCacheSize();
    void clearAttachmentCache();

private:
    QCoro::Task<Result<void>> signIn(std::string path, std::string body, Session session) override;
    QCoro::Task<Result<void>> signInAndEnter(std::string login, APIRequest entering) override;
    QCoro::Task<Result<void>> enter(APIRequest request) override;
    QCoro::Task<Result<PendingCompanyRegistration>> apply(APIRequest request) override;
    QCoro::Task<Result<void>> postAndRead(APIRequest request, Reader read) override;
    QCoro::Task<Result<void>> change(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<std::string>> create(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<void>> submit(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<void>> submitSection(SectionCommand command, Publishing publishing) override;
    QCoro::Task<Result<void>> askAndRead(APIRequest request, Publishing publishing, Reader read) override;
    QCoro::Task<Result<void>> askAndReadQuietly(APIRequest request, Reader read) override;
    QCoro::Task<Result<void>> askAndReadBeside(APIRequest request, Reader read) override;
    QCoro::Task<Result<void>> checkFreshBooks(Publishing publishing, FromBooks<void> check) override;

    // One at a time, with `isBusy`, the end of expired sessions and the message of a failure.
    template <class Value>
    QCoro::Task<Result<Value>> operation(Publishing publishing, std::function<QCoro::Task<Result<Value>>()> work);
    QCoro::Task<Result<void>> operation(Publishing publishing, std::function<QCoro::Task<Result<void>>()> work);
    std::optional<Failure> begin(Publishing publishing);
    QCoro::Task<void> finish(Publishing publishing, std::optional<Failure> failure);

    // Pieces of work that run inside `operation`. After a suspension the store may be gone: what they then wait for has
    // failed as `Cancelled`, and so must they without touching the store.
    QCoro::Task<Result<void>> load();
    QCoro::Task<Result<void>> loadAndCheck(FromBooks<void> check);
    QCoro::Task<Result<void>> mutate(APIRequest request);
    QCoro::Task<Result<void>> reload();
    QCoro::Task<Result<void>> sendCommand(APIRequest request);
    QCoro::Task<Result<void>> sendSection(SectionCommand command);
    QCoro::Task<Result<std::string>> sendCreation(APIRequest request);
    QCoro::Task<Result<void>> fetchRecord(APIRequest request, Reader read);
    QCoro::Task<Result<SessionOpening::Reply>> askToSignIn(std::string path, std::string body);
    QCoro::Task<Result<void>> authenticate(std::string path, std::string body, Session session);
    QCoro::Task<Result<void>> authenticateAndEnter(std::string login, APIRequest entering);
    QCoro::Task<Result<void>> enterCompany(APIRequest request);
    QCoro::Task<Result<void>> enterFrom(SavedSession left, APIRequest request);
    QCoro::Task<Result<void>> open(SessionOpening::Reply reply, bool isDemo, std::optional<std::string> left);
    QCoro::Task<Result<void>> restore();
    QCoro::Task<Result<void>> endSession();
    QCoro::Task<Result<std::string>> record(TransactionInput input);
    QCoro::Task<Result<void>> recordEach(std::vector<TransactionInput> inputs,
                                         std::function<void(std::size_t)> progress);
    QCoro::Task<Result<Attachment>> upload(std::string name, std::string mime, std::string data);
    QCoro::Task<Result<std::filesystem::path>> download(std::string id);
    QCoro::Task<Result<void>> sendReversal(std::string id, std::string reason);
    QCoro::Task<Result<void>> clearExpiredSession(Failure failure);
    QCoro::Task<Result<void>> keepSession(SavedSession session, std::optional<std::string> left);
    QCoro::Task<Result<std::optional<SavedSession>>> savedSession();

    void tellOfReview(PendingCompanyRegistration pending);
    void holdApplication(PendingCompanyRegistration pending);
    void clearMemory();
    void noteStale(bool isStale) { assign(m_isStale, isStale, &LedgerStore::isStaleChanged); }
    Result<void> adopt(Result<LoadedSnapshot> loaded);
    [[nodiscard]] HeldBooks heldBooks() const;
    [[nodiscard]] std::string nowStamp() const;
    void replaceSnapshot(LoadedSnapshot loaded);
    void setSnapshot(SnapshotPointer snapshot, std::string tag = {});

    std::string m_snapshotTag; // by which the service knows `m_snapshot`; empty where it gives none
    Environment m_environment;

    ServiceConnection m_connection;
    SessionOpening m_opening{m_connection};
    bool m_isSessionKept = false; // it was put where the next start finds it
    bool m_restored = false;
    int m_quietRun = 0; // the running quiet reload; 0 without one
    int m_lastQuietRun = 0;
    KeptCommands m_kept;
    std::map<std::string, Attachment> m_uploadedAttachmentMetadata; // by id, of this session
    std::unique_ptr<AttachmentCache> m_attachmentCache;             // made when it is first needed
    std::unique_ptr<EntryTemplates> m_templates;                    // likewise, as the next
    std::unique_ptr<EntryDrafts> m_drafts;
};
