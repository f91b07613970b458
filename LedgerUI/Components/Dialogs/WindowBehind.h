#pragma once

class QWidget;

/// The main window that `part` belongs to, also through other dialogs; null for none.
QWidget* windowBehind(const QWidget* part);
