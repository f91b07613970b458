#include "LedgerUI/Components/Text/MarkLabel.h"

#include <QPainter>

#include "LedgerUI/Theme/Icon.h"

MarkLabel::MarkLabel(int extent, QWidget* parent) : QWidget{parent}
{
    setFixedSize(extent, extent);
}

void MarkLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    Icon::mark().paint(&painter, rect());
}
