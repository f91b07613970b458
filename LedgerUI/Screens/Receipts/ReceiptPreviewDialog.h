#pragma once

#include <filesystem>
#include <vector>

#include <QDialog>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerUI/Presentation/Receipts/ReceiptPicture.h"

class ElidedLabel;
class IconButton;
class LedgerStore;
class QPushButton;
class ReceiptPictureView;
class TextLabel;

/// The receipts of an entry, one at a time. Left and Right go to the next one, Page Up and Page Down through the pages
/// of a document, Space and Esc close. Deletes itself when it closes.
class ReceiptPreviewDialog final : public QDialog {
    Q_OBJECT
public:
    ReceiptPreviewDialog(LedgerStore& store, std::vector<Attachment> receipts, std::size_t first, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Seen = std::expected<ReceiptPicture, ReceiptUnseen>;

    void buildLayout();
    void bind();
    void go(int step);
    void turn(int step);
    void load();
    void adoptFile(const Result<std::filesystem::path>& downloaded);
    void render();
    void present(const Seen& seen);
    void presentHead();
    void saveCopy();
    void writeCopy(const std::filesystem::path& target);
    void retranslate();
    [[nodiscard]] const Attachment& shown() const { return m_receipts[m_at]; }

    LedgerStore& m_store;
    std::vector<Attachment> m_receipts;
    std::size_t m_at;
    int m_page = 0;
    int m_pageCount = 1;
    int m_look = 0;               // counts what was asked to be shown: an answer to an earlier question is dropped
    bool m_isAwaited = false;     // until the store is free
    std::filesystem::path m_file; // of the receipt shown, once it is here
    ReceiptPictureView* m_picture = nullptr;
    IconButton* m_previous = nullptr;
    IconButton* m_next = nullptr;
    ElidedLabel* m_name = nullptr;
    TextLabel* m_count = nullptr;
    IconButton* m_pageBack = nullptr;
    IconButton* m_pageForward = nullptr;
    TextLabel* m_pageText = nullptr;
    TextLabel* m_said = nullptr;
    QPushButton* m_outside = nullptr;
    QPushButton* m_save = nullptr;
    QPushButton* m_close = nullptr;
};
