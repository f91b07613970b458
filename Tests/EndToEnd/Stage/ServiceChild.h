#pragma once

#include <QProcess>
#include <QString>

/// The ledger service as a process of its own, on a real database file; stopped with the object.
class ServiceChild {
public:
    ServiceChild(QString program, QString database);
    ~ServiceChild();

    /// Starts the service and waits until it answers; says on standard error why it did not. `registration` says who
    /// may open a company.
    bool start(const QString& registration = QStringLiteral("review"));
    /// Asks it to finish what is under way and waits until it has ended; false when it had to be killed.
    bool stop();
    /// Ends it at once, in the middle of whatever it does.
    void kill();

    /// What the operator's command prints, on the same books; `options` follow behind the database.
    [[nodiscard]] QString ask(const QStringList& command, const QStringList& options = {},
                              const QString& input = {}) const;
    /// Founds an approved company with its owner.
    void foundCompany(const QString& name, const QString& email, const QString& password) const;
    /// How many companies there are of this name, also as applications.
    [[nodiscard]] int companiesNamed(const QString& name) const;
    /// The operator's word on an application: "approve" or "reject".
    void decideOn(const QString& company, const QString& decision) const;

    /// "http://127.0.0.1:PORT", known once started.
    [[nodiscard]] QString address() const { return m_address; }

private:
    QString m_program;
    QString m_database;
    QString m_listen = QStringLiteral("127.0.0.1:0"); // from the first start on the address that it was given
    QString m_address;
    QProcess m_process;
};
