#include "LedgerUI/Presentation/Text/CopiedText.h"

QString CopiedText::visible(QString typed)
{
    typed.removeIf(
        [](QChar each) { return each.category() == QChar::Other_Format || each.category() == QChar::Other_Control; });
    return typed.trimmed();
}

QString CopiedText::code(const QString& typed)
{
    auto text = visible(typed);
    text.removeIf([](QChar each) { return each.isSpace(); });
    return text;
}
