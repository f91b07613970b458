#include "LedgerUI/Presentation/ListedText.h"

#include "LedgerCore/Domain/WordTable.h"
#include "LedgerUI/Presentation/DialogWords.h"

QString listed(QStringList parts, std::string_view locale)
{
    parts.removeAll(QString{});
    return parts.join(qString(dialogWords().text("listSeparator", locale)));
}
