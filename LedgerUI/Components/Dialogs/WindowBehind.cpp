#include "LedgerUI/Components/Dialogs/WindowBehind.h"

#include <QWidget>

QWidget* windowBehind(const QWidget* part)
{
    auto* window = part ? part->window() : nullptr;
    while (window && window->parentWidget())
        window = window->parentWidget()->window();
    return window;
}
