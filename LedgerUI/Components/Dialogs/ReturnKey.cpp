#include "LedgerUI/Components/Dialogs/ReturnKey.h"

#include <QAbstractButton>
#include <QKeyEvent>

bool isPlainReturn(const QKeyEvent& event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return isReturn && (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool pressedFocusedButton(const QWidget& dialog, const QKeyEvent& event)
{
    auto* const button = qobject_cast<QAbstractButton*>(dialog.focusWidget());
    if (!isPlainReturn(event) || !button || !button->isEnabled())
        return false;
    button->click();
    return true;
}
