#pragma once

#include <QByteArray>
#include <QString>
#include <QTcpServer>

struct Stage;

/// The line between the program and the service. It can lose one reply: what was asked arrives and is done, and the
/// program never hears of it. And it can lose one request, for whose reply the program waits in vain.
class LossyLine {
public:
    /// `service` is the address that the line leads to.
    explicit LossyLine(const QString& service);

    /// "http://127.0.0.1:PORT".
    [[nodiscard]] QString address() const;
    /// Loses the reply to the next request of this path.
    void loseReplyTo(const QByteArray& path);
    void loseRequestTo(const QByteArray& path);
    [[nodiscard]] bool hasLost() const { return m_armed.isEmpty() && m_swallowed.isEmpty(); }

private:
    void carry();

    quint16 m_service;
    QTcpServer m_server;
    QByteArray m_armed;
    QByteArray m_swallowed;
};

/// Waits for the alert that says so, and closes it.
void hearOfTheLoss(Stage& stage, const LossyLine& line);

/// Sends the form on top, whose reply is lost: it can only be sent again, and its `field` is locked.
void loseOn(Stage& stage, LossyLine& line, const char* path, const char* field, const QString& what,
            const char* sends = "Ctrl+Return");
