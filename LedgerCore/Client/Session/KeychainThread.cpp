#include "LedgerCore/Client/Session/KeychainThread.h"

#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPromise>
#include <QThread>
#include <QTimer>

#include "LedgerCore/Client/Session/KeychainLock.h"

namespace {

/// One call: answered once, by the job or by the clock.
class Call {
public:
    Call() { m_promise.start(); }

    QFuture<KeychainAnswer> future() { return m_promise.future(); }

    void answer(KeychainAnswer answer)
    {
        if (std::exchange(m_answered, true))
            return;
        m_promise.addResult(std::move(answer));
        m_promise.finish();
    }

private:
    QPromise<KeychainAnswer> m_promise;
    bool m_answered = false;
};

/// Lives on the thread that calls the keychain. Never destroyed: what waits for an answer refers to it.
QObject& home()
{
    static auto* const object = [] {
        auto* thread = new QThread;
        thread->setObjectName(QStringLiteral("keychain"));
        auto* made = new QObject;
        made->moveToThread(thread);
        thread->start();
        return made;
    }();
    static const bool endsWithTheProgram = [] {
        qAddPostRoutine([] {
            object->thread()->quit();
            object->thread()->wait();
        });
        return true;
    }();
    Q_UNUSED(endsWithTheProgram);
    return *object;
}

void start(const KeychainThread::MakeJob& make, const QString& account, std::chrono::milliseconds patience,
           const std::shared_ptr<Call>& call)
{
    const QDeadlineTimer until{patience};
    if (KeychainLock::wouldPrompt(account, until))
        return call->answer({.error = QKeychain::AccessDenied, .text = {}});
    auto* job = make(); // deletes itself when it is done, however late
    QObject::connect(job, &QKeychain::Job::finished, &home(), [call](QKeychain::Job* done) {
        const auto* read = qobject_cast<QKeychain::ReadPasswordJob*>(done);
        call->answer({.error = done->error(), .text = read ? read->textData() : QString{}});
    });
    const auto left = std::chrono::milliseconds{until.remainingTime()};
    QTimer::singleShot(left, &home(), [call] { call->answer({.error = QKeychain::AccessDenied, .text = {}}); });
    job->start();
}

}

QFuture<KeychainAnswer> KeychainThread::run(MakeJob make, QString account, std::chrono::milliseconds patience)
{
    auto call = std::make_shared<Call>();
    auto future = call->future();
    QMetaObject::invokeMethod(
        &home(),
        [make = std::move(make), account = std::move(account), patience, call = std::move(call)] {
            start(make, account, patience, call);
        },
        Qt::QueuedConnection);
    return future;
}
