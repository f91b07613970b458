#pragma once

#include <QMainWindow>

class LedgerStore;
class QScrollArea;

/// The one window. Every start begins with the same size; nothing about it is stored. It is never smaller than its
/// screens need, except on a display that is smaller itself: there its content scrolls.
class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(LedgerStore& store, QWidget* root);

    /// The sizes that a display of this room allows, in pixels at 96 dpi.
    static QSize smallestFor(QSize available);
    static QSize usualFor(QSize available);

    /// Brings the window before the others, also out of the task bar; where the desktop forbids that, it is marked
    /// there. Some desktops want `activation` for it, which they gave to what a person has started.
    void raiseToFront(const QByteArray& activation = {});

Q_SIGNALS:
    /// The first frame is on its way to the screen.
    void firstPainted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    /// Asks first while a command was sent that is not answered, an entry may have been recorded without a
    /// confirmation, or changes are not saved: what is known of it goes with the program. Every dialog that is open is
    /// asked to close before.
    void closeEvent(QCloseEvent* event) override;

private:
    /// Whether every open dialog has gone. One with changes asks, and stays until that is answered.
    [[nodiscard]] bool closesForms();
    void fitScreen();
    void prepareFields() const;

    LedgerStore& m_store;
    bool m_mayClose = false;
};
