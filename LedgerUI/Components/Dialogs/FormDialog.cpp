#include "LedgerUI/Components/Dialogs/FormDialog.h"

#include <algorithm>

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int leastWidth = 400;
constexpr int leastHeight = 200;
constexpr int aroundField = 40; // the label above a field, or two lines of its message below

}

FormDialog::FormDialog(QWidget* parent) : QDialog{parent}
{
    setWindowModality(Qt::WindowModal);
    m_banner = new Banner(Banner::Kind::error, this);
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("formScroll"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);

    auto* main = new QVBoxLayout;
    main->setContentsMargins(0, 0, 0, 0);
    main->setSpacing(0);
    m_bannerRow = new QHBoxLayout;
    m_bannerRow->addWidget(m_banner);
    m_banner->installEventFilter(this);
    m_top = new QSpacerItem(0, Space::step4, QSizePolicy::Minimum, QSizePolicy::Fixed);
    main->addItem(m_top);
    main->addLayout(m_bannerRow);
    main->addWidget(m_scroll, 1);
    m_columns = new QHBoxLayout;
    m_columns->setSpacing(0);
    m_columns->addLayout(main, 1);

    buildFoot();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(m_columns, 1);
    layout->addWidget(m_foot);
    // A banner that has just appeared asks for the height that its text takes in no width at all: what the window is
    // given is decided by fitWindow() alone.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    setMinimumSize(leastWidth, leastHeight);
    for (const auto& keys : KeyBindings::keys(Command::confirmForm))
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &FormDialog::confirm);
    connect(qApp, &QApplication::focusChanged, this, &FormDialog::revealFocus);
    retranslate();
}

FormDialog::~FormDialog()
{
    // The base moves the focus once more, when there is no form left to follow it; a field that is left by then would
    // still tell the form what it holds.
    disconnect(qApp, nullptr, this, nullptr);
    delete m_scroll->widget();
    delete m_aside;
    delete m_footPart;
}

void FormDialog::buildFoot()
{
    auto* foot = new QFrame(this);
    foot->setObjectName(QStringLiteral("dialogFoot"));
    foot->setMinimumHeight(Space::dialogFoot);
    m_foot = foot;
    m_cancel = new QPushButton(foot);
    m_cancel->setObjectName(QStringLiteral("formCancel"));
    m_cancel->setAutoDefault(false);
    m_confirm = new PrimaryButton(foot);
    m_confirm->setObjectName(QStringLiteral("formConfirm"));
    m_confirm->setAutoDefault(false);
    m_confirm->setIconSize({Space::iconBeforeText, Space::icon});
    m_confirm->setToolTip(KeyBindings::shown(Command::confirmForm));
    connect(m_cancel, &QPushButton::clicked, this, &FormDialog::reject);
    connect(m_confirm, &QPushButton::clicked, this, &FormDialog::confirm);
    m_footRow = new QHBoxLayout(foot);
    m_footRow->setContentsMargins(Space::dialogMargin, Space::step1, Space::dialogMargin, Space::step1);
    m_footRow->setSpacing(Space::step2);
    m_footRow->addStretch();
    m_footRow->addWidget(m_cancel);
    m_footRow->addWidget(m_confirm);
}

void FormDialog::setBody(QWidget* body, int width)
{
    m_bodyWidth = width;
    m_scroll->setWidget(body);
}

void FormDialog::setBodyFlush()
{
    m_isFlush = true;
    spaceBanner();
}

QWidget* FormDialog::bodyPlace() const
{
    return m_scroll->viewport();
}

void FormDialog::setAside(QWidget* aside, int width)
{
    aside->setObjectName(QStringLiteral("dialogAside"));
    aside->setFixedWidth(width);
    m_aside = aside;
    m_columns->addWidget(aside);
}

void FormDialog::setFootPart(QWidget* part)
{
    m_footPart = part;
    m_footRow->insertWidget(0, part, 1);
}

void FormDialog::setSecondary(QPushButton* button, std::optional<Command> keys)
{
    m_secondary = button;
    button->setAutoDefault(false);
    if (keys) {
        button->setToolTip(KeyBindings::shown(*keys));
        for (const auto& each : KeyBindings::keys(*keys))
            connect(new QShortcut(each, this), &QShortcut::activated, button, [button] {
                if (!button->isHidden())
                    button->click();
            });
    }
    m_footRow->insertWidget(m_footRow->indexOf(m_confirm), button);
}

void FormDialog::setConfirmText(const QString& text)
{
    m_confirmText = text;
    if (!m_isBusy)
        m_confirm->setText(text);
}

void FormDialog::setConfirmVisible(bool isVisible)
{
    m_confirm->setVisible(isVisible);
}

void FormDialog::setHasChanges(std::function<bool()> hasChanges)
{
    m_hasChanges = std::move(hasChanges);
}

void FormDialog::setLeaveQuestion(const QString& title, const QString& text, const QString& leave, const QString& stay)
{
    m_leaveTexts = {.title = title, .text = text, .leave = leave, .stay = stay};
}

void FormDialog::setBusy(bool isBusy, Leaving leaving)
{
    m_isBusy = isBusy;
    m_mayLeave = !isBusy || leaving == Leaving::allowed;
    enableFields();
    m_confirm->setEnabled(!isBusy);
    m_confirm->setText(isBusy ? word(dialogWords(), "busy") : m_confirmText);
    m_cancel->setEnabled(m_mayLeave);
}

void FormDialog::setLocked(bool isLocked)
{
    m_isLocked = isLocked;
    enableFields();
}

void FormDialog::enableFields()
{
    for (auto* part : {m_scroll->widget(), m_aside}) {
        if (part)
            part->setEnabled(!m_isBusy && !m_isLocked);
    }
    if (m_secondary)
        m_secondary->setEnabled(!m_isBusy && !m_isLocked);
}

void FormDialog::reject()
{
    if (!m_mayLeave)
        return;
    const auto giveUp = [this] {
        Q_EMIT givenUp();
        leave();
    };
    if (!wouldLose()) {
        giveUp();
        return;
    }
    const auto orUsual = [](const QString& text, std::string_view key) {
        return text.isEmpty() ? word(dialogWords(), key) : text;
    };
    MessageDialog::ask({.title = orUsual(m_leaveTexts.title, "discardTitle"),
                        .text = orUsual(m_leaveTexts.text, "discardBody"),
                        .confirm = orUsual(m_leaveTexts.leave, "discard"),
                        .cancel = orUsual(m_leaveTexts.stay, "keepEditing")},
                       this, giveUp);
}

void FormDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

void FormDialog::keyPressEvent(QKeyEvent* event)
{
    // The base would press the button that it takes for the default one, whatever has the focus.
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}

void FormDialog::showEvent(QShowEvent* event)
{
    fitWindow(Fit::exactly);
    arrangeFocus();
    QDialog::showEvent(event);
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event)
{
    // The gaps around the banner come and go with it.
    if (watched == m_banner && (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent))
        spaceBanner();
    return QDialog::eventFilter(watched, event);
}

void FormDialog::spaceBanner()
{
    const int below = m_banner->isHidden() ? 0 : Space::step3;
    m_top->changeSize(0, topMargin(), QSizePolicy::Minimum, QSizePolicy::Fixed);
    m_bannerRow->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, below);
}

int FormDialog::topMargin() const
{
    return m_isFlush && m_banner->isHidden() ? 0 : Space::step4;
}

void FormDialog::confirm()
{
    if (!m_isBusy && m_confirm->isVisible() && m_confirm->isEnabled())
        Q_EMIT confirmed();
}

void FormDialog::arrangeFocus()
{
    auto* body = m_scroll->widget();
    if (!body)
        return;
    // The foot was made before the form was filled: Tab reaches it last all the same.
    auto* last = m_aside ? m_aside : body;
    if (auto* inFoot = m_footPart ? FocusChain::firstStop(m_footPart) : nullptr) {
        FocusChain::continueWith(last, inFoot);
        last = m_footPart;
    }
    FocusChain::continueWith(last, m_cancel);
    QWidget* before = m_cancel;
    if (m_secondary) {
        setTabOrder(m_cancel, m_secondary);
        before = m_secondary;
    }
    setTabOrder(before, m_confirm);
    const auto* chosen = focusWidget();
    auto* start = FocusChain::firstStop(body);
    if (start && !(chosen && body->isAncestorOf(chosen)))
        start->setFocus();
}

void FormDialog::fitWindow(Fit fit)
{
    const auto* body = m_scroll->widget();
    if (!body)
        return;
    const int asideWidth = m_aside ? m_aside->width() : 0;
    const int width = std::min(m_bodyWidth + asideWidth, Space::dialogMaximumWidth);
    const int bodyWidth = width - asideWidth;
    const int wanted = body->layout() && body->layout()->hasHeightForWidth() ? body->layout()->heightForWidth(bodyWidth)
                                                                             : body->sizeHint().height();
    const int above =
        topMargin() +
        (m_banner->isHidden() ? 0 : m_banner->heightForWidth(bodyWidth - 2 * Space::dialogMargin) + Space::step3);
    const int asideHeight = m_aside ? m_aside->sizeHint().height() : 0;
    const auto room = roomFor(fit);
    const int frame = frameGeometry().height() - this->height();
    const int height = std::min(std::max(wanted + above, asideHeight) + footHeight(width), room.height() - frame);
    m_isSizedByHand = fit == Fit::following && (m_isSizedByHand || this->height() != m_fittedHeight);
    m_fittedHeight = m_isSizedByHand ? std::max(height, std::min(this->height(), room.height() - frame)) : height;
    resize(width, m_fittedHeight);
    if (m_fittedHeight >= height)
        settleScrolling();
    if (fit == Fit::following)
        moveInto(room);
    revealFocus();
}

/// A scroll bar that was needed before takes the width in which texts need the height that keeps it: it is let go until
/// they have their places.
void FormDialog::settleScrolling()
{
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QMetaObject::invokeMethod(
        this, [this] { m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded); }, Qt::QueuedConnection);
}

/// A hint that wraps in the foot makes it higher.
int FormDialog::footHeight(int width) const
{
    const int wanted = m_footRow->hasHeightForWidth() ? m_footRow->totalHeightForWidth(width) : 0;
    return std::max(Space::dialogFoot, wanted);
}

/// The window behind as far as it is on the screen; a dialog that was moved out of it has the screen.
QRect FormDialog::roomFor(Fit fit) const
{
    const auto* behind = parentWidget() ? parentWidget()->window() : nullptr;
    if (!behind)
        return screen()->availableGeometry();
    // Before it is shown, a dialog may believe itself on another screen than its window.
    const auto available = (fit == Fit::exactly ? behind : this)->screen()->availableGeometry();
    const auto room = behind->frameGeometry() & available;
    return fit == Fit::following && !room.contains(frameGeometry().topLeft()) ? available : room;
}

void FormDialog::moveInto(const QRect& room)
{
    const auto now = frameGeometry();
    const int top = std::max(room.top(), std::min(now.top(), room.bottom() + 1 - now.height()));
    if (top != now.top())
        move(now.left(), top);
}

/// The field in use, with its label above and its message below, stays in the part of the body that can be seen.
void FormDialog::revealFocus()
{
    auto* field = m_scroll->widget() ? m_scroll->widget()->focusWidget() : nullptr;
    if (field && FocusChain::hasFocus(m_scroll->widget()))
        m_scroll->ensureWidgetVisible(field, 0, aroundField);
}

void FormDialog::retranslate()
{
    m_cancel->setText(word(dialogWords(), "cancel"));
    if (m_isBusy)
        m_confirm->setText(word(dialogWords(), "busy"));
}
