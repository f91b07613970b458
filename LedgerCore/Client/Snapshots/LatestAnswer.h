#pragma once

#include <cstddef>
#include <functional>
#include <utility>

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>
#include <QObject>
#include <QtConcurrent/QtConcurrentRun>

/// Asks the same kind of question about books again and again, as they and what is wanted of them change. Small books
/// are looked through at once, large ones on a worker, where one question at a time is answered: those that come
/// meanwhile are asked as one when it is done.
template <class Question, class Answer>
class LatestAnswer final {
public:
    using Work = Answer (*)(const Question&);
    struct Parts {
        std::size_t entriesAtOnce = 0;      // how many are looked through within a frame
        std::function<Question()> question; // as it stands now
        Work answer = nullptr;              // on any thread
        /// An answer that is not the last one's is about other books or another question by now: what was learnt on
        /// the way may be kept, but it is not to be shown.
        std::function<void(Answer, bool isLast)> take;
    };

    /// Nothing is taken once `owner` is gone.
    LatestAnswer(QObject* owner, Parts parts) : m_owner{owner}, m_parts{std::move(parts)} {}

    /// `entries` is how many there are to look through.
    void ask(std::size_t entries)
    {
        if (m_isWorking)
            m_isOutdated = true;
        else if (entries <= m_parts.entriesAtOnce)
            m_parts.take(m_parts.answer(m_parts.question()), true);
        else
            start();
    }

    /// The answer that is being worked out is not taken any more.
    void forget()
    {
        ++m_run;
        m_isWorking = false;
    }

    [[nodiscard]] bool isWorking() const { return m_isWorking; }

private:
    static QCoro::Task<Answer> answered(Work answer, Question question)
    {
        auto future = QtConcurrent::run([answer](const Question& asked) { return answer(asked); }, std::move(question));
        auto result = co_await future;
        co_return result;
    }

    void start()
    {
        m_isWorking = true;
        m_isOutdated = false;
        QCoro::connect(answered(m_parts.answer, m_parts.question()), m_owner, [this, run = ++m_run](Answer answer) {
            if (run != m_run)
                return;
            m_isWorking = false;
            const bool isLast = !m_isOutdated;
            m_parts.take(std::move(answer), isLast);
            if (!isLast && !m_isWorking)
                start();
        });
    }

    QObject* m_owner;
    Parts m_parts;
    int m_run = 0;
    bool m_isWorking = false;
    bool m_isOutdated = false; // since the question that is being worked on was asked
};
