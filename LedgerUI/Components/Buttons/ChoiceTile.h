#pragma once

#include <QAbstractButton>

/// One of a few ways that exclude each other: a glyph, a title and a sentence that says what it means. As high as the
/// sentence needs at its width.
class ChoiceTile final : public QAbstractButton {
    Q_OBJECT
public:
    explicit ChoiceTile(QWidget* parent = nullptr);

    void present(const QString& glyph, const QString& title, const QString& sentence);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString m_glyph;
    QString m_sentence;
};
