#pragma once

#include <optional>

#include "LedgerUI/Components/Table/DetailPane.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Theme/ThemeColor.h"

class QAction;
class QPushButton;
class QVBoxLayout;

/// One contribution beside the list of all.
class ContributionPane final : public DetailPane {
    Q_OBJECT
public:
    explicit ContributionPane(QWidget* parent = nullptr);

    void present(const std::optional<ContributionDetail>& detail, const ThemeColor& ink);
    void setReverseAction(QAction* action);

Q_SIGNALS:
    void entryWanted(const QString& entryID);
    void contributionWanted(const QString& id);

private:
    void fill(const ContributionDetail& detail, QVBoxLayout& rows);
    QPushButton* link(const QString& text, const QString& name);

    QPushButton* m_reverse = nullptr;
    std::optional<ContributionDetail> m_shown;
    ThemeColor m_ink = Token::text;
};
