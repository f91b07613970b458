#pragma once

#include <QVBoxLayout>

/// Lays out what `widget` holds one below the other, with no room around it or between.
inline QVBoxLayout* plainRows(QWidget* widget)
{
    auto* rows = new QVBoxLayout(widget);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    return rows;
}
