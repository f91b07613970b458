#pragma once

#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class CapitalPageActions;
class CapitalQuestionBar;
class CapitalTabs;
class LedgerStore;
class PageHeader;
struct CapitalPlace;

/// The page of owners' capital and dividends, one currency at a time.
class CapitalView final : public PageView {
    Q_OBJECT
public:
    explicit CapitalView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;
    void followDay() override { adoptSnapshot(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void placeActions();
    void bind();
    void bindKeys();
    void adoptSnapshot();
    void present();
    void presentActions();
    void presentPrinting();
    void showSettlement(const QString& participantID);
    void showEntry(const QString& id);
    void goTo(const CapitalPlace& place);

    LedgerStore& m_store;
    DividendChoice m_wanted; // what the person chose; else the newest allocation is shown
    PageHeader* m_header = nullptr;
    CapitalQuestionBar* m_bar = nullptr;
    CapitalTabs* m_tabs = nullptr;
    CapitalPageActions* m_actions = nullptr;
    ActionSet* m_printing = nullptr;
};
