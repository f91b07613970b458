#pragma once

#include <QCheckBox>

/// A check box that looks like a switch, with a word beside it that says how it stands.
class ToggleSwitch final : public QCheckBox {
    Q_OBJECT
public:
    explicit ToggleSwitch(QWidget* parent = nullptr);

    /// What it says while it is on and while it is off; it takes the room of the longer one.
    void setWords(const QString& on, const QString& off);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& place) const override;

private:
    QString m_on;
    QString m_off;
};
