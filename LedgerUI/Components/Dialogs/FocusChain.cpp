#include "LedgerUI/Components/Dialogs/FocusChain.h"

#include <QApplication>
#include <QWidget>

namespace {

bool isWithin(const QWidget* part, const QWidget* widget)
{
    return widget == part || part->isAncestorOf(widget);
}

}

QWidget* FocusChain::firstStop(QWidget* part)
{
    auto* each = part;
    do {
        const bool takesTab = (each->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && each->isEnabled();
        if (takesTab && isWithin(part, each) && each->isVisibleTo(part->window()))
            return each;
        each = each->nextInFocusChain();
    } while (each != part);
    return nullptr;
}

void FocusChain::continueWith(QWidget* part, QWidget* next)
{
    QWidget* last = nullptr;
    auto* each = part;
    do {
        // The toolkit refuses an order with a widget that never takes the focus.
        if (each != next && isWithin(part, each) && each->focusPolicy() != Qt::NoFocus)
            last = each;
        each = each->nextInFocusChain();
    } while (each != part);
    if (last)
        QWidget::setTabOrder(last, next);
}

QWidget* FocusChain::insert(QWidget* stop, const QWidget* part)
{
    for (auto* each : part->findChildren<QWidget*>()) {
        // Lists that open over the part are windows of their own.
        if (each->focusPolicy() == Qt::NoFocus || each->window() != part->window())
            continue;
        QWidget::setTabOrder(stop, each);
        stop = each;
    }
    return stop;
}

void FocusChain::settle(QWidget* part)
{
    auto* stop = part->previousInFocusChain();
    // The toolkit refuses an order with a widget that never takes the focus.
    while (stop != part && stop->focusPolicy() == Qt::NoFocus)
        stop = stop->previousInFocusChain();
    if (stop != part)
        insert(stop, part);
}

bool FocusChain::hasFocus(const QWidget* part)
{
    const auto* focus = QApplication::focusWidget();
    return focus && isWithin(part, focus);
}
