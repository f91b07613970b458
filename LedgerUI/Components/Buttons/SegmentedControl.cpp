#include "LedgerUI/Components/Buttons/SegmentedControl.h"

#include <algorithm>

#include <QButtonGroup>
#include <QComboBox>
#include <QKeyEvent>
#include <QStandardItemModel>
#include <QToolButton>

#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

SegmentedControl::SegmentedControl(QWidget* parent) : QWidget{parent}
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_group = new QButtonGroup(this);
    m_combo = new QComboBox(this);
    m_combo->setObjectName(QStringLiteral("segmentCombo"));
    dressComboBox(*m_combo);
    m_combo->hide();
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) {
        choose(id);
        Q_EMIT chosenByUser(id);
    });
    connect(m_combo, &QComboBox::activated, this, [this](int index) {
        const int id = m_combo->itemData(index).toInt();
        choose(id);
        Q_EMIT chosenByUser(id);
    });
}

void SegmentedControl::addSegment(int id, const QString& text, const QString& glyph)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QStringLiteral("segment%1").arg(id));
    button->setCheckable(true);
    speakAsRadioButton(*button);
    button->setFocusPolicy(Qt::TabFocus);
    button->setFixedHeight(Space::control);
    button->installEventFilter(this);
    if (!glyph.isEmpty()) {
        button->setIcon(Icon::of(glyph, Token::text2, Token::accent));
        button->setIconSize({Space::iconBeforeText, Space::icon});
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
    m_group->addButton(button, id);
    // Segments may come long after what follows the control in its window.
    setTabOrder(m_buttons.empty() ? static_cast<QWidget*>(m_combo) : m_buttons.back(), button);
    m_buttons.push_back(button);
    m_combo->addItem(button->icon(), text, id);
    setSegmentText(id, text);
    shapeEnds();
    button->show();
}

void SegmentedControl::setSegmentText(int id, const QString& text)
{
    auto* button = static_cast<QToolButton*>(m_group->button(id));
    button->setText(text);
    button->setAccessibleName(text);
    m_combo->setItemText(m_combo->findData(id), text);
    updateGeometry();
    resizeEvent(nullptr);
}

void SegmentedControl::setSegmentEnabled(int id, bool isEnabled, const QString& reason)
{
    m_group->button(id)->setEnabled(isEnabled);
    m_group->button(id)->setToolTip(reason);
    static_cast<QStandardItemModel*>(m_combo->model())->item(m_combo->findData(id))->setEnabled(isEnabled);
}

void SegmentedControl::clear()
{
    for (auto* button : m_buttons)
        delete button;
    m_buttons.clear();
    m_combo->clear();
    updateGeometry();
}

void SegmentedControl::setName(const QString& name)
{
    setAccessibleName(name);
    nameComboBox(*m_combo, name);
}

void SegmentedControl::choose(int id)
{
    if (auto* button = m_group->button(id))
        button->setChecked(true);
    m_combo->setCurrentIndex(m_combo->findData(id));
}

int SegmentedControl::chosen() const
{
    return m_group->checkedId();
}

QSize SegmentedControl::sizeHint() const
{
    return {segmentsWidth(), Space::control};
}

QSize SegmentedControl::minimumSizeHint() const
{
    return {m_combo->minimumSizeHint().width(), Space::control};
}

void SegmentedControl::resizeEvent(QResizeEvent* /*event*/)
{
    const bool fits = segmentsWidth() <= width();
    m_combo->setVisible(!fits);
    m_combo->setGeometry(0, 0, width(), Space::control);
    int left = 0;
    for (auto* button : m_buttons) {
        button->setVisible(fits);
        const int extent = button->sizeHint().width();
        button->setGeometry(left, 0, extent, Space::control);
        left += extent;
    }
}

bool SegmentedControl::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            step(watched, -1);
            return true;
        case Qt::Key_Right:
        case Qt::Key_Down:
            step(watched, +1);
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SegmentedControl::shapeEnds()
{
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        const bool isFirst = index == 0;
        const bool isLast = index + 1 == m_buttons.size();
        const char* place = isFirst && isLast ? "only" : isFirst ? "first" : isLast ? "last" : "middle";
        setStyleProperty(m_buttons[index], "segment", QString::fromLatin1(place));
    }
}

void SegmentedControl::step(const QObject* from, int by)
{
    const auto count = static_cast<int>(m_buttons.size());
    const auto start = std::ranges::find(m_buttons, from);
    for (int at = static_cast<int>(start - m_buttons.begin()) + by; at >= 0 && at < count; at += by) {
        auto* button = m_buttons[static_cast<std::size_t>(at)];
        if (!button->isEnabled())
            continue;
        button->setFocus(Qt::OtherFocusReason);
        button->click();
        return;
    }
}

int SegmentedControl::segmentsWidth() const
{
    int width = 0;
    for (const auto* button : m_buttons)
        width += button->sizeHint().width();
    return width;
}
