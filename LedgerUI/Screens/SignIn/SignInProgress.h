#pragma once

#include <QWidget>

class ElidedLabel;
class QPushButton;

/// What the sign-in screen waits for, and the way to stop it. It keeps its room when there is nothing to wait
/// for. It takes the focus while everything else is locked: a second Return then stops nothing.
class SignInProgress final : public QWidget {
    Q_OBJECT
public:
    explicit SignInProgress(QWidget* parent = nullptr);

    /// An empty text takes everything away.
    void present(const QString& text);
    [[nodiscard]] QWidget* stopButton() const;

Q_SIGNALS:
    void stopped();

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void retranslate();

    ElidedLabel* m_text = nullptr;
    QPushButton* m_stop = nullptr;
};
