#pragma once

#include <QMainWindow>

/// The one window. Every start begins with the same size; nothing about it is stored.
class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* root);

Q_SIGNALS:
    /// The first frame is on its way to the screen.
    void firstPainted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
