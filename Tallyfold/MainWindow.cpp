#include "Tallyfold/MainWindow.h"

#include <QCloseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QWindow>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr QSize smallest{900, 640};
constexpr QSize usual{1160, 760};

}

MainWindow::MainWindow(LedgerStore& store, QWidget* root) : m_store{store}
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Tallyfold"));
    setWindowIcon(Icon::mark());
    auto* frame = new QScrollArea(this);
    frame->setWidgetResizable(true);
    frame->setFocusPolicy(Qt::NoFocus);
    root->setMinimumSize(smallest);
    frame->setWidget(root);
    setCentralWidget(frame);
    fitScreen();
    resize(usualFor(screen()->availableSize()));
    root->installEventFilter(this);
}

QSize MainWindow::smallestFor(QSize available)
{
    return smallest.boundedTo(available);
}

QSize MainWindow::usualFor(QSize available)
{
    return usual.boundedTo(available);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // Painting is done, and handed over, when control is back in the event loop.
        QTimer::singleShot(0, this, &MainWindow::firstPainted);
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::fitScreen, Qt::UniqueConnection);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_mayClose || !m_store.hasUnconfirmedEntry()) {
        QMainWindow::closeEvent(event);
        return;
    }
    event->ignore();
    if (m_question)
        return;
    const auto text = [](std::string_view key) { return qString(EntryWords::text(key, InterfaceLanguage::tag())); };
    m_question = MessageDialog::ask({.title = text("uncertainTitle"),
                                     .text = text("uncertainDiscard"),
                                     .confirm = text("closeAnyway"),
                                     .cancel = text("keepOpen")},
                                    this, [this] {
                                        m_mayClose = true;
                                        close();
                                    });
}

void MainWindow::fitScreen()
{
    setMinimumSize(smallestFor(screen()->availableSize()));
}
