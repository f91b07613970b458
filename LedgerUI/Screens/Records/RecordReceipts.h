#pragma once

#include <string>
#include <vector>

#include <QObject>

class LedgerStore;
class ReceiptUploads;
struct ReceiptUpload;
class ReceiptsPane;
class QWidget;

/// The receipts of a form over a section: dropped, pasted or chosen, uploaded while the form is filled in, and sent
/// with its command. A command that is confirmed meanwhile waits for those that are on their way.
class RecordReceipts final : public QObject {
    Q_OBJECT
public:
    /// `uploaded` are those of an earlier form.
    RecordReceipts(LedgerStore& store, QWidget& form, const std::vector<std::string>& uploaded);

    static constexpr int width = 332;
    [[nodiscard]] QWidget* pane() const;
    [[nodiscard]] std::vector<std::string> attachmentIDs() const;
    /// Whether a receipt would be lost with the form.
    [[nodiscard]] bool holdsMoreThan(const std::vector<std::string>& attachmentIDs) const;
    void setLocked(bool isLocked);

    /// Whether a command has to wait for an upload; it is wanted again by `rested`.
    [[nodiscard]] bool holdsBack();
    [[nodiscard]] bool isWaited() const { return m_isWaited; }
    /// The person goes on filling in the form.
    void stopWaiting() { m_isWaited = false; }

    /// Those that could not be uploaded.
    [[nodiscard]] std::vector<ReceiptUpload> failed() const;

Q_SIGNALS:
    void changed();
    void rested();

private:
    ReceiptUploads* m_uploads;
    ReceiptsPane* m_pane;
    bool m_isWaited = false;
};
