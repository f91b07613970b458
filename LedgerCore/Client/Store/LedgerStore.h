#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Http/HttpSession.h"
#include "LedgerCore/Client/Operations/AccountOperations.h"
#include "LedgerCore/Client/Operations/BookCommandOperations.h"
#include "LedgerCore/Client/Operations/CategoryOperations.h"
#include "LedgerCore/Client/Operations/MemberOperations.h"
#include "LedgerCore/Client/Operations/OperationRunner.h"
#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

class AttachmentCache;
class Clock;
class IdentifierSource;
class LanguageDefaults;
class ReplyReading;
class SessionCredentialStore;
struct LedgerExportRequest;
struct ReportExportAuthorization;
struct SavedSession;
struct SplitReply;

/// A file that is ready to be written where the person wants it.
struct ExportedFile {
    std::string name;
    std::string content;

    bool operator==(const ExportedFile&) const = default;
};

/// The one stateful object of the client: session, snapshot and what the interface shows meanwhile. Screens observe
/// it and call its operations; each operation is one request, and one runs at a time. Main thread only.
class LedgerStore final : public QObject,
                          private OperationRunner,
                          public AccountOperations,
                          public BookCommandOperations,
                          public CategoryOperations,
                          public MemberOperations {
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

    [[nodiscard]] SnapshotPointer snapshot() const { return m_snapshot; } // null while signed out
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return m_errorMessage; }
    [[nodiscard]] const std::optional<std::string>& noticeMessage() const { return m_noticeMessage; }
    [[nodiscard]] bool isDemo() const { return m_isDemo; }
    /// A company application that awaits review; null without one.
    [[nodiscard]] std::shared_ptr<const PendingCompanyRegistration> pendingCompanyRegistration() const;
    [[nodiscard]] const std::optional<std::string>& preferredAppLocale() const { return m_preferredAppLocale; }
    [[nodiscard]] const std::string& serverURL() const { return m_endpoint; }

    /// The tag of the interface language in force: the chosen one, else the system's.
    [[nodiscard]] std::string locale() const;
    /// When the snapshot was last replaced by or confirmed equal to the service's; unset while signed out.
    [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastRefresh() const { return m_lastRefresh; }
    /// Whether the last attempt to reload failed since then.
    [[nodiscard]] bool isStale() const { return m_isStale; }
    /// Today's day here, by the store's clock.
    [[nodiscard]] std::string today() const;
    /// A fresh idempotency key.
    [[nodiscard]] std::string newIdentifier();

    // What the signed-in member may do; all false while signed out.
    [[nodiscard]] bool canViewCompany() const;
    [[nodiscard]] bool canManage() const;
    [[nodiscard]] bool canExport() const;
    [[nodiscard]] bool canRecord() const;
    [[nodiscard]] bool can(std::string_view action, std::string_view accountID) const;
    [[nodiscard]] bool canViewCapital() const;
    [[nodiscard]] bool canPostCapital() const;
    [[nodiscard]] bool canCorrectCapital() const;
    [[nodiscard]] bool canExportCapital() const;
    [[nodiscard]] bool canManageCapital() const;
    [[nodiscard]] bool canCopyOwnershipToDividends() const;

    // What the company has switched on, and which capital tabs the member is shown.
    [[nodiscard]] bool contributionsEnabled() const;
    [[nodiscard]] bool dividendsEnabled() const;
    [[nodiscard]] std::vector<CapitalModuleTab> capitalActiveTabs() const;
    [[nodiscard]] bool showsCapitalNavigation() const { return !capitalActiveTabs().empty(); }

    /// Whether the member chose the category for quick entry.
    [[nodiscard]] bool isCategorySelected(std::string_view id) const;

    /// The entry of the signed-in member in the open company whose recording was not confirmed, or was not tried
    /// because a session had ended. `postTransaction` keeps and forgets it by itself; it outlives sessions.
    [[nodiscard]] std::optional<KeptEntry> keptEntry() const;
    /// Keeps an entry of the signed-in member.
    void keepEntry(TransactionInput input, bool outcomeUnknown);
    /// The person gave `keptEntry` up.
    void forgetEntry();
    /// Whether anybody's entry may have been recorded without a confirmation.
    [[nodiscard]] bool hasUnconfirmedEntry() const { return m_kept.hasUnconfirmedEntry(); }

    /// The request that the next reversal of this entry will send again, from an earlier attempt that did not succeed.
    [[nodiscard]] std::optional<KeptReversal> keptReversal(const std::string& entryID) const;

    /// The categories offered for a new entry of this kind, in their order; they belong to the held snapshot.
    [[nodiscard]] std::vector<const Category*> entryCategories(std::string_view kind) const;
    [[nodiscard]] bool canAddCategory(std::string_view kind) const;

    /// Publishes it when the choice cannot be kept for the next start.
    void setAppLanguage(std::optional<std::string> code);
    /// Heeded only while signed out and idle.
    void setServerURL(std::string address);
    /// Clears `errorMessage` and `noticeMessage`.
    void dismissMessages();
    /// Gives up what a person waits for; it ends as `Cancelled`.
    void cancel();

    /// What the user reads about a failure, in `locale` or else the language in force.
    [[nodiscard]] std::string friendly(const Failure& failure, std::optional<std::string> locale = {}) const;
    /// Runs a screen's own work and publishes its failure.
    QCoro::Task<void> perform(std::function<QCoro::Task<Result<void>>()> work);

    QCoro::Task<Result<void>> refresh(bool publishError);
    /// Does nothing while another operation runs.
    QCoro::Task<Result<void>> refreshFromUser();
    /// Reloads without `isBusy` or a message, except that of a session that ended. Does nothing while an operation runs
    /// and gives way to one that begins.
    QCoro::Task<Result<void>> refreshQuietly();
    /// Signs in with the kept session, once a process.
    QCoro::Task<Result<void>> restoreSession();
    QCoro::Task<Result<void>> login(std::string email, std::string password);
    QCoro::Task<Result<void>> registerCompany(Registration registration);
    QCoro::Task<Result<AccessChallenge>> startAccess(std::string email, std::string code, std::string purpose);
    QCoro::Task<Result<AccessVerification>> verifyAccess(std::string challengeID, std::string code);
    /// Signs in. `name` is empty where the account exists already.
    QCoro::Task<Result<void>> completeAccess(std::string challengeID, std::string ticket, std::string name,
                                             std::string password);
    /// Signs in to the company of the invitation, or not at all.
    QCoro::Task<Result<void>> loginAndAcceptInvitation(std::string email, std::string password, std::string code);
    QCoro::Task<Result<void>> startDemo(std::optional<std::string> locale, std::string profile);

    QCoro::Task<Result<CompanyChoices>> listCompanies();
    QCoro::Task<Result<void>> switchCompany(std::string id);
    /// `requestID` stays the same however often one form is sent.
    QCoro::Task<Result<PendingCompanyRegistration>> createAnotherCompany(std::string name, std::string requestID);
    QCoro::Task<Result<InvitationPreview>> previewInvitation(std::string code);
    /// Goes over to the company of the invitation.
    QCoro::Task<Result<void>> acceptCompanyInvitation(std::string code);
    QCoro::Task<Result<void>> acceptInvitation(std::string code) { return acceptCompanyInvitation(std::move(code)); }

    /// Signs out at once and succeeds even when the service cannot be told.
    QCoro::Task<Result<void>> logout();
    /// The last call before the program ends: a session that could not be kept for the next start is ended at the
    /// service, so that it does not lie about there.
    QCoro::Task<void> leave();
    /// Gives the identifier of the recorded entry, or an empty one where the service does not tell it. That the entry
    /// could not be reloaded is published.
    QCoro::Task<Result<std::string>> postTransaction(TransactionInput input, bool publishError);
    /// Records one entry after the other until one fails; `progress` is told how many are confirmed.
    QCoro::Task<Result<void>> importTransactions(std::vector<TransactionInput> inputs,
                                                 std::function<void(std::size_t)> progress);
    /// Repeats the kept request of an earlier attempt on the same entry as it stood.
    QCoro::Task<Result<void>> reverseTransaction(std::string id, std::string reason);

    QCoro::Task<Result<Attachment>> uploadAttachment(std::string name, std::string mime, std::string data);
    QCoro::Task<Result<void>> attach(std::string entryID, std::vector<std::string> attachmentIDs);
    /// Gives the private file that holds the receipt; sends nothing for one that was downloaded before.
    QCoro::Task<Result<std::filesystem::path>> downloadAttachment(std::string id);
    /// What is known of a receipt of the books or one uploaded in this session; null for others.
    [[nodiscard]] const Attachment* attachment(const std::string& id) const;
    [[nodiscard]] std::int64_t attachmentCacheBytes() const { return m_attachmentCacheBytes; }
    void refreshAttachmentCacheSize();
    void clearAttachmentCache();

    // Each loads the books anew and fails where they no longer are what the person saw or may see.
    QCoro::Task<Result<void>> validateReportExport(ReportExportAuthorization authorization, bool publishError);
    QCoro::Task<Result<ExportedFile>> exportCSVAsync(LedgerExportRequest request, bool publishError);
    QCoro::Task<Result<ExportedFile>> exportCapitalCSVAsync(bool publishError);
    QCoro::Task<Result<ExportedFile>> exportDividendsCSVAsync(bool publishError);

Q_SIGNALS:
    void snapshotChanged();
    void isBusyChanged();
    void errorMessageChanged();
    void noticeMessageChanged();
    void isDemoChanged();
    void pendingCompanyRegistrationChanged();
    void preferredAppLocaleChanged();
    void endpointChanged();
    void lastRefreshChanged();
    void isStaleChanged();
    void keptEntryChanged();
    void attachmentCacheBytesChanged();

private:
    enum class Session { regular, demonstration };

    /// What a way of signing in was answered with.
    struct SignInReply {
        CompanyRegistrationResponse response;
        std::string tag; // of the snapshot
    };

    /// A reply with a snapshot, which is read while it arrives.
    struct BooksReply {
        HttpReply head; // without its body
        std::shared_ptr<ReplyReading> reading;
    };

    /// A snapshot fresh from the service, and whether it equals the one that was held when it came.
    struct LoadedSnapshot {
        SnapshotPointer fresh;
        SnapshotPointer held;
        bool isSame = false;
        std::string tag = {};
    };

    QCoro::Task<Result<void>> change(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<std::string>> create(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<void>> submit(APIRequest request, Publishing publishing) override;
    QCoro::Task<Result<void>> askAndRead(APIRequest request, Publishing publishing, Reader read) override;

    // One at a time, with `isBusy`, the end of expired sessions and the message of a failure.
    template <class Value>
    QCoro::Task<Result<Value>> operation(Publishing publishing, std::function<QCoro::Task<Result<Value>>()> work);
    QCoro::Task<Result<void>> operation(Publishing publishing, std::function<QCoro::Task<Result<void>>()> work);
    std::optional<Failure> begin(Publishing publishing);
    QCoro::Task<void> finish(Publishing publishing, std::optional<Failure> failure);

    // Requests. After a suspension the store may be gone: these then end as `Cancelled`, and so must their callers
    // without touching the store.
    std::expected<APIClient, Failure> client();
    [[nodiscard]] std::expected<APIRequest, Failure> authorized(APIRequest request) const;
    QCoro::Task<Result<HttpReply>> exchange(APIRequest request);
    QCoro::Task<Result<LoadedSnapshot>> fetchBooks(Errand errand);
    QCoro::Task<Result<LoadedSnapshot>> fetchWhole(Errand errand);
    [[nodiscard]] std::size_t quicklyReadBytes() const;
    QCoro::Task<Result<BooksReply>> exchangeForBooks(APIRequest request);
    static LoadedSnapshot compared(LedgerSnapshot next, SnapshotPointer held, std::string tag);
    QCoro::Task<Result<LoadedSnapshot>> readSnapshot(BooksReply reply);
    QCoro::Task<Result<LoadedSnapshot>> readDelta(BooksReply reply, LoadedSnapshot held);
    /// Gives what `decode` makes of a reply, on a worker where it is long.
    template <class Record>
    QCoro::Task<Result<Record>> read(BooksReply reply, std::function<std::optional<Record>(SplitReply)> decode);

    // Pieces of work that run inside `operation`.
    QCoro::Task<Result<void>> load();
    QCoro::Task<Result<void>> mutate(APIRequest request);
    QCoro::Task<Result<void>> reload();
    QCoro::Task<Result<void>> sendCommand(APIRequest request);
    QCoro::Task<Result<std::string>> sendCreation(APIRequest request);
    QCoro::Task<Result<void>> fetchRecord(APIRequest request, Reader read);
    template <class Record>
    QCoro::Task<Result<Record>> askSignedOut(std::string path, std::string body);
    /// What is made of the books as the service has them now.
    template <class Value>
    using FromBooks = std::function<Result<Value>(const LedgerSnapshot&)>;
    template <class Value>
    QCoro::Task<Result<Value>> fromFreshBooks(bool publishError, FromBooks<Value> make);
    template <class Value>
    QCoro::Task<Result<Value>> loadAndMake(FromBooks<Value> make);
    QCoro::Task<Result<SignInReply>> signIn(std::string path, std::string body);
    QCoro::Task<Result<void>> authenticate(std::string path, std::string body, Session session);
    QCoro::Task<Result<void>> signInAndAccept(std::string login, std::string acceptance);
    QCoro::Task<Result<void>> enterCompany(APIRequest request);
    QCoro::Task<Result<void>> openCompany(BooksReply reply, SavedSession session);
    QCoro::Task<Result<void>> open(AuthResponse opened, bool isDemo, std::string tag);
    QCoro::Task<Result<void>> restore();
    QCoro::Task<Result<void>> endSession();
    QCoro::Task<Result<std::string>> record(TransactionInput input);
    QCoro::Task<Result<void>> recordEach(std::vector<TransactionInput> inputs,
                                         std::function<void(std::size_t)> progress);
    QCoro::Task<Result<Attachment>> upload(std::string name, std::string mime, std::string data);
    QCoro::Task<Result<std::filesystem::path>> download(std::string id);
    QCoro::Task<Result<void>> sendReversal(std::string id, std::string reason);
    QCoro::Task<Result<void>> clearExpiredSession(Failure failure);
    QCoro::Task<Result<void>> keepSession(SavedSession session);

    void awaitReview(PendingCompanyRegistration pending);
    void holdApplication(PendingCompanyRegistration pending);
    void clearMemory();
    void publish(const Failure& failure);
    void requireMainThread() const;
    [[nodiscard]] std::optional<MemberIdentity> signedIn() const;
    void noteStale(bool isStale) { assign(m_isStale, isStale, &LedgerStore::isStaleChanged); }
    /// Asks one of `MemberRights` about the signed-in member; false while signed out.
    [[nodiscard]] bool memberMay(bool (*right)(const Member&)) const;

    template <class Value>
    void assign(Value& field, Value value, void (LedgerStore::*changed)());
    Result<void> adopt(Result<LoadedSnapshot> loaded);
    void replaceSnapshot(LoadedSnapshot loaded);
    void setSnapshot(SnapshotPointer snapshot, std::string tag = {});

    SnapshotPointer m_snapshot;
    std::string m_snapshotTag; // by which the service knows `m_snapshot`; empty where it gives none
    bool m_isBusy = false;
    std::optional<std::string> m_errorMessage;
    std::optional<std::string> m_noticeMessage;
    bool m_isDemo = false;
    std::shared_ptr<const PendingCompanyRegistration> m_pendingCompanyRegistration;
    std::optional<std::string> m_preferredAppLocale;
    std::string m_endpoint;
    std::optional<std::chrono::system_clock::time_point> m_lastRefresh;
    bool m_isStale = false;
    Environment m_environment;

    std::optional<std::string> m_token;
    bool m_isSessionKept = false; // where the next start finds it
    bool m_restored = false;
    int m_quietRun = 0; // the running quiet reload; 0 without one
    int m_lastQuietRun = 0;
    KeptCommands m_kept;
    std::map<std::string, Attachment> m_uploadedAttachmentMetadata; // by id, of this session
    std::unique_ptr<AttachmentCache> m_attachmentCache;             // made when it is first needed
    std::int64_t m_attachmentCacheBytes = 0;
    std::unique_ptr<APIClient> m_cachedClient;
};

template <class Value>
void LedgerStore::assign(Value& field, Value value, void (LedgerStore::*changed)())
{
    requireMainThread();
    if (field == value)
        return;
    field = std::move(value);
    Q_EMIT(this->*changed)();
}
