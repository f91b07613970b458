#pragma once

class QAbstractButton;
class QWidget;

/// Has readers speak of a checkable button as one of several choices, of which one is taken, rather than as a check
/// box. To be called when the button is made.
void speakAsRadioButton(QAbstractButton& button);

/// Has readers speak of a panel that holds the keyboard as a group. To be called when the panel is made.
void speakAsGroup(QWidget& panel);

/// Has readers speak of a widget that paints a picture as such. To be called when the widget is made.
void speakAsPicture(QWidget& picture);
