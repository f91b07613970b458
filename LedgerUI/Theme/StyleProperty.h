#pragma once

class QVariant;
class QWidget;

/// Sets a property that the style sheet selects by, and has the widget's look follow.
void setStyleProperty(QWidget* widget, const char* name, const QVariant& value);
