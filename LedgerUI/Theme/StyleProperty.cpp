#include "LedgerUI/Theme/StyleProperty.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void setStyleProperty(QWidget* widget, const char* name, const QVariant& value)
{
    if (widget->property(name) == value)
        return;
    widget->setProperty(name, value);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}
