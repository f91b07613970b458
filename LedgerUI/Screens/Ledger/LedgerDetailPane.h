#pragma once

#include <variant>

#include <QFrame>

#include "LedgerUI/Presentation/Ledger/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Receipts/ReceiptSource.h"
#include "LedgerUI/Theme/ThemeColor.h"

class GlyphLabel;
class IconButton;
class LedgerDetailBody;
class QHBoxLayout;
class QScrollArea;
class QVBoxLayout;
class TextLabel;

/// The pane beside the table: one entry, the sums of several, or with none selected what is on every account.
class LedgerDetailPane final : public QFrame {
    Q_OBJECT
public:
    explicit LedgerDetailPane(QWidget* parent = nullptr);

    /// `kindColor` is what its kind has in these books.
    void presentEntry(const LedgerEntryDetail& detail, const ThemeColor& kindColor, bool isBusy);
    void presentSelection(const QString& headline, const std::vector<MoneyText>& sums);
    void presentBalances(const LedgerBalances& balances);
    void retranslate();

    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void closeWanted();
    /// Esc: the focus wants to go back to where it came from.
    void left();
    void reversalWanted(const QString& entryID);
    void entryWanted(const QString& entryID);
    void recordWanted(const PageLink& record);
    void accountWanted(const QString& accountID);
    void receiptWanted(const QString& entryID, std::size_t at);
    /// With the files that were dropped, or none.
    void receiptsOffered(const QString& entryID, const std::vector<ReceiptSource>& sources);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Entry {
        LedgerEntryDetail detail;
        ThemeColor kindColor;
        bool isBusy = false;

        bool operator==(const Entry&) const = default;
    };
    struct Selection {
        QString headline;
        std::vector<MoneyText> sums;

        bool operator==(const Selection&) const = default;
    };
    using Shown = std::variant<std::monostate, Entry, Selection, LedgerBalances>;

    /// Whether the pane has to be built anew, which a step through the ledger seldom asks for.
    bool adopt(Shown wanted);
    void setHead(const QString& glyph, const QString& headline, const ThemeColor& glyphColor,
                 const ThemeColor& headlineColor);
    /// Puts the filled body in the place of the one before.
    void showBody(LedgerDetailBody* body);
    void setFoot(const std::vector<QWidget*>& actions);
    void addReceipts(LedgerDetailBody& body, const LedgerEntryDetail& detail);
    void takeFiles(const std::vector<ReceiptSource>& sources);

    Shown m_shown; // nothing yet, or not in this language
    GlyphLabel* m_glyph = nullptr;
    TextLabel* m_headline = nullptr;
    IconButton* m_close = nullptr;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_bodyRow = nullptr;
    LedgerDetailBody* m_body = nullptr;
    QFrame* m_foot = nullptr;
    QHBoxLayout* m_footRow = nullptr;
    QWidget* m_lastStop = nullptr; // of the body, after which Tab goes to the foot
};
