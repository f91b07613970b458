#include "Tests/EndToEnd/Stage/ServiceChild.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <QRegularExpression>

#include "Tests/EndToEnd/Stage/StoryTeller.h"

namespace {

constexpr int startMilliseconds = 30'000;
constexpr int stopMilliseconds = 10'000;

}

ServiceChild::ServiceChild(QString program, QString database)
    : m_program(std::move(program)), m_database(std::move(database))
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

ServiceChild::~ServiceChild()
{
    stop();
}

bool ServiceChild::start(const QString& registration)
{
    static const QRegularExpression ready{QStringLiteral("listening on (http://[^\\s]+)")};
    m_process.start(m_program,
                    {QStringLiteral("serve"), QStringLiteral("--listen"), m_listen, QStringLiteral("--database"),
                     m_database, QStringLiteral("--create"), QStringLiteral("--registration"), registration});
    QString said;
    while (m_process.waitForReadyRead(startMilliseconds)) {
        said += QString::fromUtf8(m_process.readAllStandardOutput());
        if (const auto match = ready.match(said); match.hasMatch()) {
            m_address = match.captured(1);
            // A restart must come back on the same port, or the client would talk to nobody.
            m_listen = m_address.mid(QStringLiteral("http://").size());
            return true;
        }
    }
    return false;
}

bool ServiceChild::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return true;
    m_process.terminate();
    if (m_process.waitForFinished(stopMilliseconds))
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    kill();
    return false;
}

void ServiceChild::kill()
{
    m_process.kill();
    m_process.waitForFinished(stopMilliseconds);
}

QString ServiceChild::ask(const QStringList& command, const QStringList& options, const QString& input) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(m_program, command + QStringList{QStringLiteral("--database"), m_database} + options);
    process.write(input.toUtf8());
    process.closeWriteChannel();
    expect(process.waitForFinished(startMilliseconds) && process.exitCode() == 0,
           QStringLiteral("the operator's command succeeds: ") + command.join(QLatin1Char(' ')));
    return QString::fromUtf8(process.readAllStandardOutput());
}

void ServiceChild::foundCompany(const QString& name, const QString& email, const QString& password) const
{
    std::ignore = ask({QStringLiteral("create-company")},
                      {QStringLiteral("--name"), name, QStringLiteral("--country"), QStringLiteral("ID"),
                       QStringLiteral("--owner-name"), email.section(QLatin1Char('@'), 0, 0),
                       QStringLiteral("--owner-email"), email},
                      password + QLatin1Char('\n'));
}

int ServiceChild::companiesNamed(const QString& name) const
{
    return static_cast<int>(ask({QStringLiteral("companies"), QStringLiteral("list")}).count(name));
}

void ServiceChild::decideOn(const QString& company, const QString& decision) const
{
    const auto listed = ask({QStringLiteral("companies"), QStringLiteral("list")}).split(QLatin1Char('\n'));
    const auto found = std::ranges::find_if(listed, [&](const QString& line) { return line.contains(company); });
    expect(found != listed.end(), QStringLiteral("the company is listed"));
    std::ignore =
        ask({QStringLiteral("companies"), decision}, {QStringLiteral("--id"), found->section(QLatin1Char('\t'), 0, 0)});
}
