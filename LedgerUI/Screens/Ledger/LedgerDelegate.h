#pragma once

#include <QStyledItemDelegate>

#include "LedgerUI/Theme/ThemeColor.h"

class LedgerTableModel;
struct LedgerRow;
struct MoneyText;

/// Paints the cells of the ledger's table, on one line or on two.
class LedgerDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    enum class Density { oneLine, twoLines };

    /// How far into its cell the text of an entry begins, behind the glyph.
    static constexpr int titleIndent = 24;
    /// The room between the paddings of a cell, which are wider at the table's edges.
    [[nodiscard]] static QRect contentsOf(const QRect& cell, int column);

    explicit LedgerDelegate(const LedgerTableModel& model, QObject* parent = nullptr);

    void setDensity(Density density) { m_density = density; }
    [[nodiscard]] Density density() const { return m_density; }
    /// The row under the pointer; -1 for none.
    void setHoveredRow(int row) { m_hovered = row; }
    /// Whether a day that the row above shows too steps back.
    void setDaysGrouped(bool areGrouped) { m_daysGrouped = areGrouped; }

    [[nodiscard]] int rowHeight() const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    [[nodiscard]] ThemeColor kindColor(const LedgerRow& row) const;
    void paintDate(QPainter& painter, const QRect& cell, int row) const;
    void paintEntry(QPainter& painter, const QRect& cell, const LedgerRow& row) const;
    /// Receipts and the reversed chip at the right of `line`; answers where they begin.
    int paintMarks(QPainter& painter, const QRect& line, const LedgerRow& row) const;
    void paintNote(QPainter& painter, QRect line, const LedgerRow& row) const;
    void paintAccount(QPainter& painter, const QRect& cell, const LedgerRow& row) const;
    void paintAmounts(QPainter& painter, const QRect& cell, const LedgerRow& row) const;
    void paintAmount(QPainter& painter, const QRect& line, const MoneyText& amount, const LedgerRow& row) const;

    const LedgerTableModel& m_model;
    Density m_density = Density::twoLines;
    int m_hovered = -1;
    bool m_daysGrouped = true;
};
