#include "LedgerUI/Screens/Company/Settings/TransactionColorsDialog.h"

#include <algorithm>

#include <QButtonGroup>
#include <QCoro/QCoroTask>
#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Company/KindColors.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int dialogWidth = 660;
constexpr int swatchExtent = 22;
constexpr int swatchRoom = 28;
constexpr int stripSwatch = 14;
constexpr int stripStep = 42;
constexpr int stripKinds = 5; // more would leave no room for the words
constexpr int rowHeight = 36;

/// One colour on offer; the chosen one has a ring.
class Swatch final : public QAbstractButton {
public:
    Swatch(const ThemeColor& color, QWidget* parent) : QAbstractButton{parent}, m_color{color}
    {
        setCheckable(true);
        setFixedSize(swatchRoom, swatchRoom);
        speakAsRadioButton(*this);
        connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter{this};
        painter.setRenderHint(QPainter::Antialiasing);
        const int inset = (swatchRoom - swatchExtent) / 2;
        const auto box = QRectF{rect()}.adjusted(inset, inset, -inset, -inset);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::current().color(m_color));
        painter.drawRoundedRect(box, Space::radiusSmall, Space::radiusSmall);
        if (!isChecked() && !hasFocus())
            return;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen{Theme::current().color(hasFocus() ? Token::focus : Token::text), 2});
        painter.drawRoundedRect(QRectF{rect()}.adjusted(1, 1, -1, -1), Space::radius, Space::radius);
    }

private:
    ThemeColor m_color;
};

}

void ColorStrip::present(const LedgerSnapshot& snapshot)
{
    m_parts.clear();
    for (const auto kind : KindColors::kinds().first(stripKinds)) {
        const auto color = paletteColor(KindColors::ofCompany(kind, snapshot));
        m_parts.push_back({.glyph = entryKindGlyph(kind), .light = color.light, .dark = color.dark});
    }
    updateGeometry();
    update();
}

QSize ColorStrip::sizeHint() const
{
    return {static_cast<int>(m_parts.size()) * stripStep, Space::icon};
}

void ColorStrip::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    int left = 0;
    for (const auto& part : m_parts) {
        const auto color = Theme::current().color(ThemeColor{part.light, part.dark});
        const int top = (height() - stripSwatch) / 2;
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF{QRect{left, top, stripSwatch, stripSwatch}}, Space::radiusSmall,
                                Space::radiusSmall);
        painter.drawPixmap(left + stripSwatch + Space::step1, (height() - Space::icon) / 2,
                           Icon::pixmap(part.glyph, color, Space::icon, devicePixelRatioF()));
        left += stripStep;
    }
}

TransactionColorsDialog::TransactionColorsDialog(LedgerStore& store, QWidget* parent)
    : FormDialog{parent}, m_store{store}
{
    setObjectName(QStringLiteral("colorsDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    confirmButton().setObjectName(QStringLiteral("colorsClose"));
    cancelButton().hide();
    buildBody();
    connect(this, &FormDialog::confirmed, this, &TransactionColorsDialog::leave);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] {
        if (m_store.snapshot())
            present();
        else
            leave();
    });
    connect(&m_store, &LedgerStore::isBusyChanged, this, &TransactionColorsDialog::sendNext);
    present();
    m_rows.front().swatches->checkedButton()->setFocus();
}

void TransactionColorsDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_for = new TextLabel(TypeStep::body, Token::text2, body);
    m_for->setWordWrap(true);
    m_hint = new TextLabel(TypeStep::small, Token::text2, body);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(0);
    rows->addWidget(m_for);
    rows->addSpacing(Space::step2);
    for (const auto kind : KindColors::kinds()) {
        rows->addWidget(new Line(Qt::Horizontal, body));
        auto* line = new QWidget(body);
        m_rows.push_back(buildRow(kind, line));
        rows->addWidget(line);
    }
    rows->addWidget(new Line(Qt::Horizontal, body));
    rows->addSpacing(Space::step3);
    rows->addWidget(m_hint);
    rows->addStretch(1);
    setBody(body, dialogWidth);
}

TransactionColorsDialog::Row TransactionColorsDialog::buildRow(std::string_view kind, QWidget* body)
{
    Row row{.kind = std::string{kind}};
    row.glyph = new GlyphLabel(entryKindGlyph(kind), Token::text2, Space::icon, body);
    row.name = new TextLabel(TypeStep::body, Token::text, body);
    row.chosen = new TextLabel(TypeStep::body, Token::text2, body);
    row.chosen->setObjectName(QStringLiteral("color.") + qString(kind));
    row.chosen->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row.swatches = new QButtonGroup(body);
    auto* layout = new QHBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::step1);
    layout->addWidget(row.glyph);
    layout->addSpacing(Space::step1);
    layout->addWidget(row.name, 1);
    int at = 0;
    for (const auto& option : TransactionColorOptions::all()) {
        auto* swatch = new Swatch(paletteColor(option), body);
        swatch->setObjectName(QStringLiteral("color.%1.%2").arg(qString(kind), qString(option.id)));
        row.swatches->addButton(swatch, at++);
        layout->addWidget(swatch);
    }
    layout->addWidget(row.chosen, 1);
    body->setFixedHeight(rowHeight);
    connect(row.swatches, &QButtonGroup::idClicked, this, [this, name = row.kind](int id) { choose(name, id); });
    return row;
}

std::string TransactionColorsDialog::chosenFor(const std::string& kind) const
{
    const auto waiting = m_waiting.find(kind);
    return waiting != m_waiting.end() ? waiting->second
                                      : std::string{KindColors::ofCompany(kind, *m_store.snapshot()).id};
}

void TransactionColorsDialog::present()
{
    setWindowTitle(word(bookkeepingWords(), "colors"));
    m_for->setText(word(bookkeepingWords(), "colorsFor", {m_store.snapshot()->company.name}));
    m_hint->setText(word(bookkeepingWords(), "colorsHint"));
    setConfirmText(word(dialogWords(), "close"));
    for (const auto& row : m_rows)
        presentRow(row);
}

void TransactionColorsDialog::presentRow(const Row& row)
{
    const auto& locale = InterfaceLanguage::tag();
    const auto id = chosenFor(row.kind);
    const auto kind = wordIn(locale, ledgerWords(), "kind." + row.kind);
    row.name->setText(kind);
    int at = 0;
    for (const auto& option : TransactionColorOptions::all()) {
        auto* swatch = row.swatches->button(at++);
        const auto name = qString(option.names.text(locale));
        const auto spoken = word(bookkeepingWords(), "colorOf", {kind.toStdString(), name.toStdString()});
        swatch->setAccessibleName(spoken);
        swatch->setToolTip(name);
        if (option.id != id)
            continue;
        swatch->setChecked(true);
        row.chosen->setText(name);
        row.glyph->setGlyph(entryKindGlyph(row.kind), paletteColor(option));
    }
}

void TransactionColorsDialog::choose(const std::string& kind, int at)
{
    m_waiting[kind] = TransactionColorOptions::all()[static_cast<std::size_t>(at)].id;
    present();
    sendNext();
}

void TransactionColorsDialog::sendNext()
{
    if (m_isSending || m_waiting.empty() || m_store.isBusy() || !m_store.snapshot())
        return;
    m_isSending = true;
    const auto next = *m_waiting.begin();
    QCoro::connect(m_store.setTransactionColor(next.first, next.second), this, [this, next](const Result<void>& sent) {
        m_isSending = false;
        // Another colour may have been chosen meanwhile; a refused one is given up.
        const auto waiting = m_waiting.find(next.first);
        if (waiting != m_waiting.end() && (!sent || waiting->second == next.second))
            m_waiting.erase(waiting);
        if (!m_store.snapshot())
            return;
        present();
        sendNext();
    });
}

void TransactionColorsDialog::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_store.snapshot())
        present();
}
