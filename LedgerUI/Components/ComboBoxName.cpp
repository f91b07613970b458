#include "LedgerUI/Components/ComboBoxName.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

void nameComboBox(QComboBox& box, const QString& name)
{
    box.setAccessibleName(name);
    box.view()->setAccessibleName(name);
    if (auto* typed = box.lineEdit()) {
        typed->setAccessibleName(name);
        if (typed->completer())
            typed->completer()->popup()->setAccessibleName(name);
    }
}
