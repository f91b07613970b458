#pragma once

#include <variant>
#include <vector>

#include <QList>

#include "LedgerUI/Components/Table/DetailPane.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Receipts/ReceiptSource.h"
#include "LedgerUI/Theme/ThemeColor.h"

class LedgerDetailBody;
class QAbstractButton;
class QAction;
class QHBoxLayout;

/// The pane beside the table: one entry, the sums of several, or with none selected what is on every account.
class LedgerDetailPane final : public DetailPane {
    Q_OBJECT
public:
    explicit LedgerDetailPane(QWidget* parent = nullptr);

    /// What can be done with what is chosen: its foot shows of these whatever is offered now.
    struct Offered {
        QList<QAction*> main; // what undoes entries: in words
        QList<QAction*> others;
    };
    void offer(const Offered& offered);
    /// `kindColor` is what its kind has in these books.
    void presentEntry(const LedgerEntryDetail& detail, const ThemeColor& kindColor);
    void presentSelection(const QString& headline, const std::vector<MoneyText>& sums);
    void presentBalances(const LedgerBalances& balances);
    void retranslate();

Q_SIGNALS:
    void entryWanted(const QString& entryID);
    void recordWanted(const PageLink& record);
    void accountWanted(const QString& accountID);
    void receiptWanted(const QString& entryID, std::size_t at);
    /// With the files that were dropped, or none.
    void receiptsOffered(const QString& entryID, const std::vector<ReceiptSource>& sources);

private:
    struct Entry {
        LedgerEntryDetail detail;
        ThemeColor kindColor;

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
    void showBody(LedgerDetailBody* body);
    void makeFoot();
    void add(QAbstractButton& button, QAction& action);
    void follow(QAbstractButton& button, const QAction& action);
    void addReceipts(LedgerDetailBody& body, const LedgerEntryDetail& detail);
    void takeFiles(const std::vector<ReceiptSource>& sources);

    Shown m_shown; // nothing yet, or not in this language
    Offered m_offered;
    QHBoxLayout* m_footRow = nullptr;
    std::vector<QAbstractButton*> m_actions; // in the foot, from the left
    std::vector<QAbstractButton*> m_main;    // those with words
};
