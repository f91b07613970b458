#pragma once

#include <map>

#include <QWidget>

#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

class QFrame;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class ReceiptPictureView;
class ReceiptRowView;
class TextLabel;

/// The receipts of a draft: buttons to choose files, a row for each with how far it is, and a look at the chosen one.
class ReceiptsPane final : public QWidget {
    Q_OBJECT
public:
    explicit ReceiptsPane(ReceiptUploads& uploads, QWidget* parent = nullptr);

    /// While locked, nothing is added and nothing taken away.
    void setLocked(bool isLocked);
    void addFiles(const std::vector<ReceiptSource>& sources);

protected:
    void changeEvent(QEvent* event) override;

private:
    enum class Wanted { pictures, all };

    void buildLayout();
    void present();
    void presentRows();
    void presentPicture();
    void presentHint();
    ReceiptRowView* addRow(int number);
    void chooseFiles(Wanted wanted);
    void retranslate();

    ReceiptUploads& m_uploads;
    TextLabel* m_title = nullptr;
    QPushButton* m_photos = nullptr;
    QPushButton* m_files = nullptr;
    QScrollArea* m_list = nullptr;
    QVBoxLayout* m_rowLayout = nullptr;
    std::map<int, ReceiptRowView*> m_rows; // by the number of the receipt
    QFrame* m_drop = nullptr;
    TextLabel* m_dropText = nullptr;
    TextLabel* m_dropFormats = nullptr;
    ReceiptPictureView* m_picture = nullptr;
    TextLabel* m_hint = nullptr;
    int m_chosen = 0;
    bool m_isLocked = false;
};
