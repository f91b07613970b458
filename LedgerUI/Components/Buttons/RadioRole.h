#pragma once

class QAbstractButton;

/// Has readers speak of a checkable button as one of several choices, of which one is taken, rather than as a check
/// box. To be called when the button is made.
void speakAsRadioButton(QAbstractButton& button);
