#pragma once

#include "LedgerUI/Screens/Company/CompanyTab.h"

class PlainTable;
class TextLabel;

/// What a member who does not manage the company may do in it, in words.
class AccessTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit AccessTab(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;

protected:
    void present() override;

private:
    TextLabel* m_title = nullptr;
    TextLabel* m_role = nullptr;
    TextLabel* m_permissions = nullptr;
    PlainTable* m_accounts = nullptr;
    TextLabel* m_none = nullptr;
    TextLabel* m_ask = nullptr;
};
