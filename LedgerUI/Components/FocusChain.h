#pragma once

class QWidget;

/// The order in which Tab visits the controls of one part of a window.
namespace FocusChain {

/// The first control in `part`, or `part` itself, that Tab reaches now; null when there is none.
QWidget* firstStop(QWidget* part);

/// Has Tab go from the last control of `part` to `next`.
void continueWith(QWidget* part, QWidget* next);

/// Whether the focus is on `part` or inside it.
bool hasFocus(const QWidget* part);

}
