#pragma once

class QComboBox;
class QString;

/// Gives the lists that drop down from a combo box the rows of the other popups.
void dressComboBox(QComboBox& box);

/// Names a combo box for readers, and with it its lists: they are windows of their own.
void nameComboBox(QComboBox& box, const QString& name);
