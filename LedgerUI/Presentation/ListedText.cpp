#include "LedgerUI/Presentation/ListedText.h"

#include "LedgerUI/Presentation/DialogWords.h"
#include "LedgerUI/Presentation/InterfaceLanguage.h"

QString listed(QStringList parts)
{
    parts.removeAll(QString{});
    return parts.join(word(dialogWords(), "listSeparator"));
}
