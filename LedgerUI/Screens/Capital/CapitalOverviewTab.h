#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Capital/CapitalOverview.h"

class Banner;
class OwnershipBars;
class QAction;
class QSplitter;
class RecordHead;
class RecordTable;
class TextLabel;
struct RecordInks;

/// Where owners and participants stand in one currency, how the company was owned over time, and what was recorded
/// lately.
class CapitalOverviewTab final : public QWidget {
    Q_OBJECT
public:
    explicit CapitalOverviewTab(QWidget* parent = nullptr);

    void present(const CapitalOverview& overview, const RecordInks& inks);
    /// What can be done about the missing history.
    void setHistoryAction(QAction* action);
    [[nodiscard]] RecordHead& ownersHead() const { return *m_ownersHead; }
    [[nodiscard]] RecordHead& ownershipHead() const { return *m_ownershipHead; }
    [[nodiscard]] QList<QWidget*> panes() const;

Q_SIGNALS:
    /// The settlement of a participant of dividends is wanted: the breakdown of their row.
    void settlementWanted(const QString& participantID);
    void entryWanted(const QString& entryID);
    /// A record was opened that leads to no entry.
    void entryRefused(const QString& why);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    QWidget* buildLatest();
    void retranslate();

    Banner* m_banner = nullptr;
    RecordHead* m_ownersHead = nullptr;
    RecordTable* m_owners = nullptr;
    TextLabel* m_notes = nullptr;
    QWidget* m_ownershipPane = nullptr;
    RecordHead* m_ownershipHead = nullptr;
    OwnershipBars* m_ownership = nullptr;
    RecordHead* m_latestHead = nullptr;
    RecordTable* m_latest = nullptr;
    TextLabel* m_latestNone = nullptr;
    std::vector<std::string> m_participants; // of the owners' rows
    QString m_title;
    QString m_since;
};
