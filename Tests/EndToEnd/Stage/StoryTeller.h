#pragma once

#include <functional>

#include <QDir>
#include <QProcess>
#include <QString>

/// Says each step of a story on the terminal and keeps a picture of what a person then saw.
class StoryTeller {
public:
    /// `screens` receives the pictures, numbered in the order of the steps; those of an earlier run go.
    explicit StoryTeller(QDir screens);

    /// From now on `reader` is asked at each picture what is wrong with it for somebody who cannot see it.
    void readBy(const QString& reader);

    void begin(const QString& story);
    /// One step: said, done, and pictured.
    void step(const QString& title, const std::function<void()>& act);
    /// A picture between steps.
    void picture(const QString& title);
    /// The last picture of a story that cannot go on; nobody is asked about it.
    void pictureOfFailure();

    [[nodiscard]] int steps() const { return m_steps; }

private:
    void keep(const QString& title);
    void listen(const QString& title);

    QDir m_screens;
    QProcess m_reader;
    int m_steps = 0;
};

/// Stops the story when a promise of the program does not hold.
void expect(bool holds, const QString& promise);
