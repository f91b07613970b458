#pragma once

#include <string>

#include <QProcess>
#include <QString>

/// Somebody who begins an expense in a program of their own, which is there to be killed.
class Typist {
public:
    struct Order {
        std::string note;
        bool isSent = false;
    };

    /// Starts that program. It is killed with the object at the latest.
    Typist(const QString& service, const Order& order);
    ~Typist();

    /// Ends it at once, in the middle of whatever it does.
    void kill();

    /// What that program does: gives the process's exit code where nobody kills it.
    static int work(const std::string& service, const Order& order);

private:
    QProcess m_process;
};
