#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Theme/ThemeColor.h"

class Banner;
class ContributionPane;
class EmptyState;
class ListDetailPage;
class QAction;
class QVBoxLayout;
class RecordHead;
class RecordTable;
class TextLabel;
struct RecordInks;

/// What the owners paid in: each contribution with its detail, the sum of the period, and what was paid in before
/// these books.
class ContributionsTab final : public QWidget {
    Q_OBJECT
public:
    explicit ContributionsTab(QWidget* parent = nullptr);

    void present(const ContributionList& list, const RecordInks& inks);
    /// Of the chosen contribution; nothing where none is chosen.
    void presentDetail(const std::optional<ContributionDetail>& detail, const RecordInks& inks);
    void setHistoryAction(QAction* action);
    void setReverseAction(QAction* action);
    [[nodiscard]] RecordHead& baselineHead() const { return *m_baselineHead; }
    [[nodiscard]] std::string chosen() const;
    bool choose(const std::string& id);
    void toggleDetail();
    [[nodiscard]] QList<QWidget*> panes() const;

Q_SIGNALS:
    void chosenChanged();
    void entryWanted(const QString& entryID);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void presentBaselines(const std::vector<BaselineSection>& sections);
    void retranslate();

    Banner* m_banner = nullptr;
    RecordTable* m_table = nullptr;
    EmptyState* m_notice = nullptr;
    TextLabel* m_hint = nullptr;
    RecordHead* m_baselineHead = nullptr;
    QWidget* m_baselineBox = nullptr;
    QWidget* m_baselineLines = nullptr;
    QVBoxLayout* m_baselines = nullptr;
    std::vector<BaselineSection> m_shownBaselines;
    ContributionPane* m_detail = nullptr;
    ListDetailPage* m_page = nullptr;
};
