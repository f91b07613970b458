#include "LedgerUI/Presentation/Text/ListedText.h"

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/DialogWords.h"

QString listed(QStringList parts, std::string_view locale)
{
    parts.removeAll(QString{});
    return parts.join(qString(dialogWords().text("listSeparator", locale)));
}
