#include "LedgerCore/Client/Http/TransferWatch.h"

#include <QNetworkReply>

TransferWatch::TransferWatch(QNetworkReply& reply, const TransferLimits& limits) : QObject(&reply), m_reply(reply)
{
    startTimer(m_idle, limits.idle);
    startTimer(m_answer, limits.answer);
    startTimer(m_whole, limits.whole);

    const auto moved = [this] {
        if (m_idle.isActive())
            m_idle.start();
    };
    connect(&reply, &QNetworkReply::uploadProgress, this, moved);
    connect(&reply, &QNetworkReply::downloadProgress, this, moved);
    connect(&reply, &QNetworkReply::readyRead, this, moved);
    connect(&reply, &QNetworkReply::metaDataChanged, this, [this, moved] {
        m_answer.stop();
        moved();
    });
    connect(&reply, &QNetworkReply::finished, this, [this] {
        m_idle.stop();
        m_answer.stop();
        m_whole.stop();
    });
}

void TransferWatch::stop(Ending ending)
{
    if (m_reply.isFinished())
        return;
    m_ending = ending;
    m_reply.abort();
}

void TransferWatch::startTimer(QTimer& timer, std::chrono::milliseconds limit)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, [this] { stop(Ending::timedOut); });
    timer.start(limit);
}
