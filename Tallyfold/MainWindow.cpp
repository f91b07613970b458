#include "Tallyfold/MainWindow.h"

#include <QEvent>
#include <QTimer>

#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr QSize smallest{900, 640};
constexpr QSize usual{1160, 760};

}

MainWindow::MainWindow(QWidget* root)
{
    setWindowTitle(QStringLiteral("Tallyfold"));
    setWindowIcon(Icon::mark());
    setCentralWidget(root);
    setMinimumSize(smallest);
    resize(usual);
    root->installEventFilter(this);
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
