#pragma once

#include <optional>

#include <QFrame>

#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Theme/ThemeColor.h"

class IconButton;
class QAction;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class TextLabel;

/// One contribution beside the list of all.
class ContributionPane final : public QFrame {
    Q_OBJECT
public:
    explicit ContributionPane(QWidget* parent = nullptr);

    void present(const std::optional<ContributionDetail>& detail, const ThemeColor& ink);
    void setReverseAction(QAction* action);
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void closeWanted();
    void left();
    void entryWanted(const QString& entryID);
    void contributionWanted(const QString& id);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fill(const ContributionDetail& detail, QVBoxLayout& rows);
    QPushButton* link(const QString& text, const QString& name);

    TextLabel* m_headline = nullptr;
    IconButton* m_close = nullptr;
    QScrollArea* m_scroll = nullptr;
    QWidget* m_foot = nullptr;
    QPushButton* m_reverse = nullptr;
    std::optional<ContributionDetail> m_shown;
    ThemeColor m_ink = Token::text;
};
