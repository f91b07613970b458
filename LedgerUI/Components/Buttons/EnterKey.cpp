#include "LedgerUI/Components/Buttons/EnterKey.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

namespace {

class EnterKey final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
        const bool isAlone = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        auto* const button = isEnter && isAlone ? qobject_cast<QAbstractButton*>(watched) : nullptr;
        if (!button || !button->hasFocus())
            return false;
        QKeyEvent space{event->type(), Qt::Key_Space, {}, QStringLiteral(" "), key.isAutoRepeat()};
        QCoreApplication::sendEvent(button, &space);
        return true;
    }
};

}

void letEnterPressButtons()
{
    static QPointer<EnterKey> installed;
    if (installed)
        return;
    installed = new EnterKey(qApp);
    qApp->installEventFilter(installed);
}
