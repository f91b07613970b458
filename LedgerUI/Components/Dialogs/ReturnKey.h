#pragma once

class QKeyEvent;
class QWidget;

/// Return and Enter, without other keys, press the button that holds the focus, whatever the default button is.
/// Answers whether they did.
bool pressedFocusedButton(const QWidget& dialog, const QKeyEvent& event);

/// Whether the key is Return or Enter by itself.
bool isPlainReturn(const QKeyEvent& event);
