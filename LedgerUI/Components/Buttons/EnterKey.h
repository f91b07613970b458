#pragma once

/// From now on Return and Enter do on every button of the program what the space bar does: they press the one that has
/// the focus. The toolkit keeps these keys for a dialog's default button, whatever has the focus. Once is enough.
void letEnterPressButtons();
