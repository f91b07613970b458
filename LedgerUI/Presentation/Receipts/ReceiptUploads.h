#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <QObject>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerUI/Presentation/Receipts/ReceiptSource.h"

class LedgerStore;

/// One receipt of a draft on its way to the service.
struct ReceiptUpload {
    enum class Stage { waiting, preparing, ready, uploading, uploaded, failed };
    using Reason = std::variant<std::monostate, ReceiptProblem, Failure>;

    int number = 0; // within its draft; never given twice
    ReceiptSource source{};
    Stage stage = Stage::waiting;
    std::shared_ptr<const ReadyReceipt> ready{}; // once prepared
    Attachment attachment{};                     // once uploaded
    Reason reason{};                             // once failed
};

/// A row of the list of receipts, as a screen shows it.
struct ReceiptRow {
    int number = 0;
    QString name;
    QString state;   // "Uploading…", "1.1 MB, compressed", "Failed"
    QString message; // why it failed
    bool isDocument = false;
    bool isBusy = false;
    bool mayRetry = false;

    bool operator==(const ReceiptRow&) const = default;
};

/// The receipts of one draft. Each is prepared on a worker and uploaded at once, one after the other, whenever the
/// store is free and its member signed in to its company; what fails stays in the list with its reason. An upload that
/// is taken away, or whose draft ends, stays at the service as a loose receipt, which the service removes in time.
class ReceiptUploads final : public QObject {
    Q_OBJECT
public:
    /// `taken` receipts of the ten are on the entry already.
    ReceiptUploads(LedgerStore& store, std::size_t taken, QObject* parent);

    void add(std::vector<ReceiptSource> sources);
    void remove(int number);
    void retry(int number);
    /// Receipts that were uploaded before, by an earlier form.
    void adopt(const std::vector<std::string>& attachmentIDs);
    /// Receipts that failed elsewhere, to be tried again here.
    void adopt(std::vector<ReceiptUpload> failed);

    [[nodiscard]] const std::vector<ReceiptUpload>& all() const { return m_uploads; }
    [[nodiscard]] std::vector<ReceiptRow> rows(std::string_view locale) const;
    /// Those that are uploaded are on the entry now, and leave the draft.
    void markLinked();
    /// Another draft begins, with no receipts yet. What was on its way is given up.
    void startOver();
    /// How many can still be added.
    [[nodiscard]] std::size_t room() const;
    /// How many of those that were added last found no room.
    [[nodiscard]] std::size_t leftOut() const { return m_leftOut; }
    [[nodiscard]] bool isBusy() const;
    /// Of those that are uploaded, in the order of the list.
    [[nodiscard]] std::vector<std::string> attachmentIDs() const;
    [[nodiscard]] std::vector<ReceiptUpload> failed() const;

Q_SIGNALS:
    void changed();
    /// The last of those on their way has arrived or failed.
    void rested();

private:
    void proceed();
    void prepareNext();
    void uploadNext();
    [[nodiscard]] bool isAtHome() const;
    void settle(int number, ReceiptUpload::Stage stage, ReceiptUpload::Reason reason = {});
    [[nodiscard]] ReceiptUpload* find(int number);
    [[nodiscard]] ReceiptUpload* first(ReceiptUpload::Stage stage);

    LedgerStore& m_store;
    std::optional<MemberIdentity> m_whose; // who began the draft
    std::vector<ReceiptUpload> m_uploads;
    std::size_t m_taken;
    std::size_t m_leftOut = 0;
    int m_lastNumber = 0;
    bool m_isPreparing = false; // also for one that was taken away meanwhile
    bool m_isUploading = false;
};
