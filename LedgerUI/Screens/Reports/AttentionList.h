#pragma once

#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Reports/ReportAttention.h"

class QVBoxLayout;
class TextLabel;

/// What wants a hand, a row for each with the button that lends it. Long lists show the most pressing ones first and
/// the rest when asked.
class AttentionList final : public QWidget {
    Q_OBJECT
public:
    explicit AttentionList(QWidget* parent = nullptr);

    void present(std::vector<AttentionItem> items);
    /// How many rows a long list shows first.
    void showFirst(std::size_t rows);
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void wanted(const AttentionItem& item);

private:
    void fill();
    void addRow(std::size_t at);

    std::vector<AttentionItem> m_items;
    TextLabel* m_title = nullptr;
    TextLabel* m_count = nullptr;
    QWidget* m_rows = nullptr;
    QVBoxLayout* m_layout = nullptr;
    std::size_t m_shownFirst = 4;
    bool m_showsAll = false;
};
