#pragma once

#include <QString>

class QWidget;

/// What a person reads in a control: the text of a label, button, field or choice, the rows of a view, and for
/// anything else the texts of the visible controls inside it, line by line from the top.
QString readableText(const QWidget& control);
