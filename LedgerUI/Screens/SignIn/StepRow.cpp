#include "LedgerUI/Screens/SignIn/StepRow.h"

#include <QHBoxLayout>
#include <QPainter>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int markExtent = 20;
constexpr int lineWidth = 20;
constexpr int gap = 6;

enum class Standing { done, current, next };

}

/// A disc with a number, or with a check once the step is done.
class StepRow::Mark final : public QWidget {
public:
    Mark(int number, QWidget* parent) : QWidget{parent}, m_number{number} { setFixedSize(markExtent, markExtent); }

    void setStanding(Standing standing)
    {
        m_standing = standing;
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        const auto& theme = Theme::current();
        QPainter painter{this};
        painter.setRenderHint(QPainter::Antialiasing);
        const bool isNext = m_standing == Standing::next;
        painter.setPen(isNext ? QPen{theme.color(Token::control)} : QPen{Qt::NoPen});
        if (!isNext)
            painter.setBrush(theme.color(m_standing == Standing::done ? Token::ok : Token::accent));
        painter.drawEllipse(QRectF{rect()}.adjusted(0.5, 0.5, -0.5, -0.5));
        if (m_standing == Standing::done) {
            const auto check =
                Icon::pixmap(QStringLiteral("check"), theme.color(Token::onAccent), Space::icon, devicePixelRatioF());
            painter.drawPixmap((markExtent - Space::icon) / 2, (markExtent - Space::icon) / 2, check);
            return;
        }
        painter.setFont(TypeScale::font(TypeStep::micro));
        painter.setPen(theme.color(isNext ? Token::text2 : Token::onAccent));
        painter.drawText(rect(), Qt::AlignCenter, QString::number(m_number));
    }

private:
    int m_number;
    Standing m_standing = Standing::next;
};

StepRow::StepRow(int steps, QWidget* parent) : QWidget{parent}
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    for (int step = 0; step < steps; ++step) {
        if (step > 0) {
            auto* line = new Line(Qt::Horizontal, this);
            line->setFixedWidth(lineWidth);
            row->addWidget(line);
        }
        m_marks.push_back(new Mark(step + 1, this));
        m_titles.push_back(new TextLabel(TypeStep::small, Token::text2, this));
        row->addWidget(m_marks.back());
        row->addWidget(m_titles.back());
    }
    row->addStretch(1);
}

void StepRow::present(const QStringList& titles, int current, const QString& spoken)
{
    for (qsizetype step = 0; step < titles.size(); ++step) {
        const auto at = static_cast<std::size_t>(step);
        const auto standing = step < current ? Standing::done : step == current ? Standing::current : Standing::next;
        m_marks[at]->setStanding(standing);
        m_titles[at]->setText(titles[step]);
        m_titles[at]->setTone(standing == Standing::current ? Token::accent : Token::text2);
        m_titles[at]->setBold(standing == Standing::current);
    }
    setAccessibleName(spoken);
}
