#pragma once

class QWidget;

/// The order in which Tab visits the controls of one part of a window.
namespace FocusChain {

/// The first control in `part`, or `part` itself, that Tab reaches now; null when there is none.
QWidget* firstStop(QWidget* part);

/// Has Tab go from the last control of `part` to `next`.
void continueWith(QWidget* part, QWidget* next);

/// Has Tab go from `stop` through the controls inside `part`, in the order in which they were made; answers the last.
/// For controls made later than those that come after them.
QWidget* insert(QWidget* stop, const QWidget* part);

/// Has Tab go through the controls inside `part` where `part` itself was made. For a place that is filled later.
void settle(QWidget* part);

/// Whether the focus is on `part` or inside it.
bool hasFocus(const QWidget* part);

}
