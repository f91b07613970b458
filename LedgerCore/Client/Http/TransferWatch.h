#pragma once

#include <QObject>
#include <QTimer>

#include "LedgerCore/Client/Http/HttpSession.h"

/// Ends one transfer that keeps still or lasts too long, and remembers that it was not the network's doing.
class TransferWatch final : public QObject {
public:
    enum class Ending { natural, timedOut, cancelled, tooLarge };

    TransferWatch(QNetworkReply& reply, const TransferLimits& limits);

    [[nodiscard]] Ending ending() const { return m_ending; }

    /// Stops the transfer; the reply announces its end before this returns.
    void stop(Ending ending);

private:
    void startTimer(QTimer& timer, std::chrono::milliseconds limit);

    QNetworkReply& m_reply; // the parent
    Ending m_ending = Ending::natural;
    QTimer m_idle;
    QTimer m_answer;
    QTimer m_whole;
};
