#include "LedgerUI/Screens/Root/KeysDialog.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Keys/KeyHelp.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

/// One section under its heading: keys at the left, what they do beside them.
QWidget* sectionView(const KeySection& section)
{
    auto* view = new QWidget;
    auto* grid = new QGridLayout(view);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Space::step4);
    grid->setVerticalSpacing(Space::step2);
    grid->setColumnStretch(1, 1);
    auto* title = new TextLabel(TypeStep::section, Token::text, view);
    title->setText(section.title);
    grid->addWidget(title, 0, 0, 1, 2);
    int row = 0;
    for (const auto& line : section.lines) {
        auto* keys = new TextLabel(TypeStep::body, Token::accent, view);
        keys->setText(line.keys);
        auto* text = new TextLabel(TypeStep::body, Token::text, view);
        text->setText(line.text);
        text->setWordWrap(true);
        grid->addWidget(keys, ++row, 0, Qt::AlignTop);
        grid->addWidget(text, row, 1);
    }
    grid->setRowStretch(row + 1, 1);
    return view;
}

/// A column of sections, and how many lines it has by now.
struct Column {
    QVBoxLayout* rows = nullptr;
    std::size_t lines = 0;
};

/// The sections in columns of about one length.
QWidget* columnsOf(const std::vector<KeySection>& sections, std::size_t count)
{
    auto* body = new QWidget;
    auto* row = new QHBoxLayout(body);
    row->setContentsMargins(Space::dialogMargin, Space::dialogMargin, Space::dialogMargin, Space::dialogMargin);
    row->setSpacing(Space::step8);
    std::vector<Column> columns(count);
    for (auto& column : columns) {
        column.rows = new QVBoxLayout;
        column.rows->setSpacing(Space::step6);
        row->addLayout(column.rows, 1);
    }
    for (const auto& section : sections) {
        auto& shorter = *std::ranges::min_element(columns, {}, &Column::lines);
        shorter.rows->addWidget(sectionView(section));
        shorter.lines += section.lines.size();
    }
    for (const auto& column : columns)
        column.rows->addStretch(1);
    return body;
}

/// For readers, who meet the dialog as one text.
QString spoken(const std::vector<KeySection>& sections)
{
    QStringList lines;
    for (const auto& section : sections) {
        lines << section.title;
        for (const auto& line : section.lines)
            lines << line.keys + QStringLiteral(": ") + line.text;
    }
    return lines.join(QLatin1Char('\n'));
}

}

KeysDialog::KeysDialog(QWidget* parent) : QDialog{parent}
{
    setObjectName(QStringLiteral("keysDialog"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("keysScroll"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::StrongFocus); // whose keys scroll
    speakAsGroup(*m_scroll);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(buildFoot());
    present();
    m_scroll->setFocus();
}

void KeysDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        present();
    QDialog::changeEvent(event);
}

/// What the list leaves over, or the button has no use for.
void KeysDialog::keyPressEvent(QKeyEvent* event)
{
    auto& bar = *m_scroll->verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Home:
        return bar.triggerAction(QAbstractSlider::SliderToMinimum);
    case Qt::Key_End:
        return bar.triggerAction(QAbstractSlider::SliderToMaximum);
    case Qt::Key_PageUp:
        return bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
        return bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    default:
        QDialog::keyPressEvent(event);
    }
}

QWidget* KeysDialog::buildFoot()
{
    auto* foot = new QFrame(this);
    foot->setObjectName(QStringLiteral("dialogFoot"));
    foot->setFixedHeight(Space::dialogFoot);
    m_close = new PrimaryButton(foot);
    m_close->setObjectName(QStringLiteral("keysClose"));
    m_close->setDefault(true);
    m_close->setToolTip(KeyBindings::shown(Command::pressFocused));
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, 0);
    row->addStretch(1);
    row->addWidget(m_close);
    return foot;
}

void KeysDialog::present()
{
    const auto sections = keyHelp(InterfaceLanguage::tag());
    const int width = std::min(Space::dialogMaximumWidth, room().width());
    auto* body = columnsOf(sections, 2);
    body->setParent(m_scroll->viewport()); // whose font it is measured with
    if (body->minimumSizeHint().width() > width - m_scroll->verticalScrollBar()->sizeHint().width()) {
        delete body;
        body = columnsOf(sections, 1);
    }
    m_scroll->setWidget(body);
    m_close->setText(word(dialogWords(), "close"));
    setWindowTitle(word(keyWords(), "title"));
    setAccessibleName(windowTitle());
    m_scroll->setAccessibleName(windowTitle());
    setAccessibleDescription(spoken(sections));
    const int wanted = body->layout()->heightForWidth(width) + Space::dialogFoot;
    resize(width, std::min(wanted, room().height()));
}

/// As far as the window behind and the screen let it grow.
QSize KeysDialog::room() const
{
    const auto* const behind = parentWidget() ? parentWidget()->window() : this;
    return behind->size().boundedTo(screen()->availableSize());
}
