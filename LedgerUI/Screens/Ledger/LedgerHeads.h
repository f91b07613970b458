#pragma once

#include <QHeaderView>

/// The heads of the ledger's columns. The sorted one is bold, with its arrow right beside the word; all of them leave
/// room for that, so that sorting moves no column.
class LedgerHeads final : public QHeaderView {
    Q_OBJECT
public:
    explicit LedgerHeads(QWidget* parent);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

private:
    [[nodiscard]] QString textOf(int section) const;
};
