#include "LedgerUI/Screens/Dividends/DividendActionForm.h"

#include <QPushButton>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Records/RecordActionFormSending.h"
#include "LedgerUI/Screens/Records/RecordActionFormShowing.h"

template class RecordActionForm<DividendSection>;

DividendForm DividendSection::opened(const Route& route, const LedgerSnapshot& snapshot, std::string_view /*today*/,
                                     std::string_view locale)
{
    return DividendForms::opened(route, snapshot, locale);
}

DividendForm DividendSection::reloaded(Form form, const LedgerSnapshot& snapshot, std::string_view /*today*/,
                                       std::string_view locale)
{
    return reloadLatest(std::move(form), snapshot, locale);
}

QString DividendSection::whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return DividendActions::whyNot(form.route.action, snapshot, locale);
}

bool DividendSection::hasTable(const Route& route)
{
    return route.action == DividendAction::allocate;
}

bool DividendSection::takesReceipts(const Route& route)
{
    return movesMoney(route.action);
}

DividendActionForm::DividendActionForm(LedgerStore& store, const DividendRoute& route, QWidget* parent)
    : RecordActionForm{store, route, parent}
{
    addRatioActions();
}

DividendActionForm::DividendActionForm(LedgerStore& store, const DividendCommand& kept, bool outcomeUnknown,
                                       QWidget* parent)
    : RecordActionForm{store, kept, outcomeUnknown, parent}
{
    addRatioActions();
}

void DividendActionForm::addRatioActions()
{
    const bool allocates = form().route.action == DividendAction::allocate;
    if (!allocates && form().route.action != DividendAction::setParticipant)
        return;
    const auto add = [this](const char* name) {
        auto* button = new QPushButton;
        button->setObjectName(QString::fromLatin1(name));
        button->setProperty("kind", QStringLiteral("flat"));
        button->setAutoDefault(false);
        body().addTableAction(button);
        return button;
    };
    if (allocates) {
        m_useDefaults = add("useDefaultRatios");
        connect(m_useDefaults, &QPushButton::clicked, this,
                [this] { adoptForm(DividendForms::withDefaultRatios(form(), *snapshot(), locale())); });
    }
    m_fill = add("fillFromOwnership");
    connect(m_fill, &QPushButton::clicked, this, &DividendActionForm::fillFromOwnership);
    present();
}

void DividendActionForm::present()
{
    RecordActionForm::present();
    if (!m_fill)
        return;
    if (m_useDefaults)
        m_useDefaults->setText(word(capitalFormWords(), "useDefaults"));
    m_fill->setText(word(capitalFormWords(), "title.dividend.fillFromOwnership"));
    const auto whyNot =
        DividendActions::whyNot(DividendAction::fillFromOwnership, {}, *snapshot(), store().today(), locale());
    m_fill->setEnabled(whyNot.isEmpty());
    m_fill->setToolTip(whyNot);
}

/// A change of its own: it alters the default rule, whose ratios then stand in this form, and adds the participants
/// who are missing.
void DividendActionForm::fillFromOwnership()
{
    auto* form =
        new DividendActionForm(store(), DividendRoute{.action = std::string{DividendAction::fillFromOwnership}}, this);
    form->whenDone([this](const RecordOutcome& /*outcome*/) {
        takeSnapshot();
        adoptForm(m_useDefaults ? DividendForms::withDefaultRatios(this->form(), *snapshot(), locale())
                                : DividendForms::reloadLatest(this->form(), *snapshot(), locale()));
    });
    form->open();
}
