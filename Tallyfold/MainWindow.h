#pragma once

#include <QMainWindow>
#include <QPointer>

class LedgerStore;
class MessageDialog;
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

Q_SIGNALS:
    /// The first frame is on its way to the screen.
    void firstPainted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    /// Asks first while an entry may have been recorded without a confirmation: what is known of it goes with the
    /// program.
    void closeEvent(QCloseEvent* event) override;

private:
    void fitScreen();

    LedgerStore& m_store;
    QPointer<MessageDialog> m_question;
    bool m_mayClose = false;
};
