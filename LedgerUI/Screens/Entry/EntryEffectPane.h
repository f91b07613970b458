#pragma once

#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

class QHBoxLayout;
class QLabel;
class TextLabel;

/// What saving leads to: for a transfer both balances before and after, for an exchange the rate that the two amounts
/// imply.
class EntryEffectPane final : public QWidget {
    Q_OBJECT
public:
    explicit EntryEffectPane(QWidget* parent = nullptr);

    void present(const EntryFormContent& content);

private:
    [[nodiscard]] QWidget* effectCard(const EntryEffect& effect);
    [[nodiscard]] QWidget* rateCard(const std::string& currency, const QString& rate);
    void replaceCards(const std::vector<QWidget*>& cards);

    TextLabel* m_title = nullptr;
    QHBoxLayout* m_row = nullptr;
    TextLabel* m_hint = nullptr;
};
