#include "Tests/EndToEnd/Stage/Mailbox.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

int Mailbox::codesTo(const std::string& address) const
{
    return static_cast<int>(codes(address).size());
}

std::string Mailbox::latestCode(const std::string& address) const
{
    const auto all = codes(address);
    return all.isEmpty() ? std::string{} : all.last().toStdString();
}

/// The oldest first: the names of the letters begin with the time.
QStringList Mailbox::codes(const std::string& address) const
{
    static const QRegularExpression code{QStringLiteral("^Subject: .*?(\\d{6})"), QRegularExpression::MultilineOption};
    static const QRegularExpression fold{QStringLiteral("\\?=\\r?\\n =\\?utf-8\\?Q\\?")}; // of a long encoded subject
    QStringList found;
    const QDir folder{m_folder};
    for (const auto& name : folder.entryList({QStringLiteral("*.eml")}, QDir::Files, QDir::Name)) {
        QFile file{folder.filePath(name)};
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto letter = QString::fromUtf8(file.readAll());
        if (!letter.contains(QStringLiteral("To: ")) || !letter.contains(QString::fromStdString(address)))
            continue;
        if (const auto match = code.match(QString{letter}.remove(fold)); match.hasMatch())
            found << match.captured(1);
    }
    return found;
}
