#include "LedgerUI/Theme/StyleProperty.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void setStyleProperty(QWidget* widget, const char* name, const QVariant& value)
{
    if (widget->property(name) == value)
        return;
    widget->setProperty(name, value);
    // A widget that was never shown is polished when it is; done too early, the style would undo fonts set meanwhile.
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}
