#include "Tallyfold/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QWindow>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/QuitWarning.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr QSize smallest{900, 640};
constexpr QSize usual{1160, 760};

/// The question that a person has before them and that wants its answer first; null for none.
QDialog* questionInFront()
{
    auto* open = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    return open && open->objectName() == QStringLiteral("questionDialog") ? open : nullptr;
}

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
        QTimer::singleShot(0, this, [this] {
            Q_EMIT firstPainted();
            prepareFields();
        });
    }
    return QMainWindow::eventFilter(watched, event);
}

/// The first field with a button that clears it makes Qt look through its plugins for pictures. That is done here,
/// while a person signs in, and not when the workspace opens.
void MainWindow::prepareFields() const
{
    static_cast<void>(style()->standardIcon(QStyle::SP_LineEditClearButton));
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::fitScreen, Qt::UniqueConnection);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_mayClose) {
        QMainWindow::closeEvent(event);
        return;
    }
    event->ignore();
    if (questionInFront() || !closesForms())
        return;
    const auto warning =
        quitWarning({.awaitsChange = m_store.awaitsChange(),
                     .hasUnconfirmed = m_store.hasUnconfirmed(),
                     .hasUnsavedChanges = UnsavedChanges::count(*this) > 0 || CommandForm::countWaiting(*this) > 0 ||
                                          m_store.drafts().wouldLose() || m_store.wouldLoseUntried()},
                    InterfaceLanguage::tag());
    if (!warning) {
        QMainWindow::closeEvent(event);
        event->accept();
        return;
    }
    MessageDialog::ask({.title = warning->title,
                        .text = warning->text,
                        .confirm = word(commandWords(), "closeAnyway"),
                        .cancel = word(commandWords(), "keepOpen")},
                       this, [this] {
                           m_mayClose = true;
                           close();
                       });
}

bool MainWindow::closesForms()
{
    while (auto* open = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        const auto* form = qobject_cast<FormDialog*>(open);
        if (m_store.awaitsChange() && (!form || form->isBusy()))
            return true; // it could not say more than the window does
        open->reject();
        if (!open->isVisible())
            continue;
        // An entry that is discarded now is not asked about once more as what only this program keeps.
        if (auto* question = questionInFront(); question && qobject_cast<TransactionForm*>(open))
            connect(question, &QDialog::accepted, this, [this] { m_store.drafts().letGo(); });
        return false;
    }
    return true;
}

void MainWindow::raiseToFront(const QByteArray& activation)
{
    if (!activation.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activation); // where Qt looks for it
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    QApplication::alert(this);
}

void MainWindow::fitScreen()
{
    setMinimumSize(smallestFor(screen()->availableSize()));
}
