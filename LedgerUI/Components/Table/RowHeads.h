#pragma once

#include <QHeaderView>

/// The heads of a table's columns. The sorted one is bold, with its arrow right beside the word; all of them leave room
/// for that, so that sorting moves no column. A head stands at the right where its model says so.
class RowHeads final : public QHeaderView {
    Q_OBJECT
public:
    explicit RowHeads(QWidget* parent);

    /// The column whose cells begin with a glyph: its head stands over their texts.
    void setGlyphColumn(int section) { m_glyphColumn = section; }
    /// Nothing is sorted by these heads, and long ones go on in up to three lines.
    void setWrapping();
    /// The first head stays at its place while the others scroll sideways.
    void freezeFirst() { m_freezesFirst = true; }
    /// The width that the head of a wrapping column needs, its paddings included.
    [[nodiscard]] int wrappedWidth(int section) const;
    /// Makes the heads as high as the longest needs at the widths that the columns have.
    void fitHeight();

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

private:
    [[nodiscard]] QString textOf(int section) const;
    [[nodiscard]] QRect contentsOf(const QRect& rect, int section) const;

    int m_glyphColumn = -1;
    bool m_wraps = false;
    bool m_freezesFirst = false;
};
