#include "LedgerUI/Components/Page/BusyBar.h"

#include <QEvent>
#include <QPainter>

#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int thickness = 3;
constexpr int delayMilliseconds = 300;
constexpr int stepMilliseconds = 30;
constexpr double stepLength = 0.02;
constexpr double runnerShare = 0.3; // of the bar's length

}

BusyBar::BusyBar(QWidget* parent) : QWidget{parent}
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedHeight(thickness);
    hide();
    m_delay.setSingleShot(true);
    m_delay.setInterval(delayMilliseconds);
    m_step.setInterval(stepMilliseconds);
    connect(&m_delay, &QTimer::timeout, this, [this] {
        m_phase = 0.0;
        show();
        raise();
        m_step.start();
    });
    connect(&m_step, &QTimer::timeout, this, [this] {
        m_phase = m_phase >= 1.0 ? 0.0 : m_phase + stepLength;
        update();
    });
}

void BusyBar::setBusy(bool isBusy)
{
    if (!isBusy) {
        m_delay.stop();
        m_step.stop();
        hide();
    } else if (!m_delay.isActive() && !m_step.isActive()) {
        m_delay.start();
    }
}

void BusyBar::overlay(QWidget* host, int top)
{
    m_host = host;
    m_top = top;
    setParent(host);
    host->installEventFilter(this);
}

void BusyBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    const auto& theme = Theme::current();
    painter.fillRect(rect(), theme.color(Token::accentSoft));
    const auto length = width() * runnerShare;
    painter.fillRect(QRectF{-length + m_phase * (width() + length), 0, length, thickness}, theme.color(Token::accent));
}

bool BusyBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_host && event->type() == QEvent::Resize)
        setGeometry(0, m_top, m_host->width(), thickness);
    return QWidget::eventFilter(watched, event);
}
