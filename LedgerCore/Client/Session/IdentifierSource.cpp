#include "LedgerCore/Client/Session/IdentifierSource.h"

#include <QUuid>

std::string RandomIdentifiers::next()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}
