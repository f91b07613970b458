#include "Tests/EndToEnd/Stage/Mailbox.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

int Mailbox::lettersTo(const std::string& address) const
{
    return static_cast<int>(letters(address).size());
}

std::string Mailbox::latestCode(const std::string& address) const
{
    static const QRegularExpression code{QStringLiteral("^Subject: .*?(\\d{6})"), QRegularExpression::MultilineOption};
    static const QRegularExpression fold{QStringLiteral("\\?=\\r?\\n =\\?utf-8\\?Q\\?")}; // of a long encoded subject
    const auto all = letters(address);
    return all.isEmpty() ? std::string{} : code.match(QString{all.last()}.remove(fold)).captured(1).toStdString();
}

/// The oldest first: their names begin with the time.
QStringList Mailbox::letters(const std::string& address) const
{
    QStringList found;
    const QDir folder{m_folder};
    for (const auto& name : folder.entryList({QStringLiteral("*.eml")}, QDir::Files, QDir::Name)) {
        QFile file{folder.filePath(name)};
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto letter = QString::fromUtf8(file.readAll());
        if (letter.contains(QStringLiteral("To: ")) && letter.contains(QString::fromStdString(address)))
            found << letter;
    }
    return found;
}
