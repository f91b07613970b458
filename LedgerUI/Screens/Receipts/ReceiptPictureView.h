#pragma once

#include <QImage>
#include <QWidget>

/// A receipt within its frame, as large as the room allows; or a sentence that says why there is nothing to see.
class ReceiptPictureView final : public QWidget {
    Q_OBJECT
public:
    explicit ReceiptPictureView(QWidget* parent = nullptr);

    /// `name` is what readers speak for the picture.
    void showPicture(const QImage& picture, const QString& name);
    void showText(const QString& text);

    [[nodiscard]] QSize sizeHint() const override { return {240, 200}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 96}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_picture;
    QImage m_fitted; // for the size painted last
    QString m_text;
};
