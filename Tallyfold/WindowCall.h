#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QString>

/// Lets a second start of the program raise the window that is open already, instead of opening another one. It works
/// for one user at one display, through a socket in a folder that only this user can enter.
class WindowCall final : public QObject {
    Q_OBJECT
public:
    /// The socket's file; its folder is made private.
    explicit WindowCall(QString name = usualName());

    enum class Standing { first, second };
    /// Has the open window raised, or else answers such calls from now on. A window that is open but does not answer in
    /// time is taken for hung: this start is then a first one that nobody can call.
    [[nodiscard]] Standing begin();
    /// Answers no more: the window is closed.
    void end();

    /// Of this user and this display.
    [[nodiscard]] static QString usualName();

Q_SIGNALS:
    /// `activation` is the leave to come forward that the desktop gave the other start; empty where it gave none.
    void called(const QByteArray& activation);

private:
    enum class Answer { none, silent, raised };
    [[nodiscard]] Answer call() const;
    void answer();

    QString m_name;
    QLocalServer m_server;
};
