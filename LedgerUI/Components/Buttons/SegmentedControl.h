#pragma once

#include <vector>

#include <QWidget>

class QButtonGroup;
class QComboBox;
class QHBoxLayout;
class QToolButton;

/// One choice of a few, side by side; where they do not fit, the same choice as a combo. Arrow keys move.
class SegmentedControl final : public QWidget {
    Q_OBJECT
public:
    explicit SegmentedControl(QWidget* parent = nullptr);

    /// `id` is the caller's; an empty glyph shows none.
    void addSegment(int id, const QString& text, const QString& glyph = {});
    void setSegmentText(int id, const QString& text);
    /// A disabled segment says why in its tool tip.
    void setSegmentEnabled(int id, bool isEnabled, const QString& reason = {});
    void clear();
    /// What the choice is about, for readers.
    void setName(const QString& name);

    /// Marks a segment without announcing it.
    void choose(int id);
    /// The chosen id, or -1.
    [[nodiscard]] int chosen() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void chosenByUser(int id);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void shapeEnds();
    void step(const QObject* from, int by);
    [[nodiscard]] int segmentsWidth() const;

    QButtonGroup* m_group = nullptr;
    QComboBox* m_combo = nullptr;
    std::vector<QToolButton*> m_buttons;
};
