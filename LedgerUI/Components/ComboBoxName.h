#pragma once

class QComboBox;
class QString;

/// Names a combo box for readers, and with it the lists that drop down from it: they are windows of their own.
void nameComboBox(QComboBox& box, const QString& name);
