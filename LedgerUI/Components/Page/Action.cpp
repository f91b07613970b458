#include "LedgerUI/Components/Page/Action.h"

#include <utility>

#include <QAction>
#include <QMenu>
#include <QWidget>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Theme/Icon.h"

QString namedWithKeys(const QString& name, const QList<QKeySequence>& keys)
{
    return keys.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, keys.first().toString(QKeySequence::NativeText));
}

Action keyedAction(const char* id, Command command, std::function<void()> run)
{
    return {.id = QString::fromLatin1(id), .text = {}, .keys = KeyBindings::keys(command), .run = std::move(run)};
}

ActionSet::ActionSet(QWidget* page) : QObject{page}, m_page{page} {}

void ActionSet::present(std::vector<Action> actions)
{
    for (auto& each : actions) {
        auto& known = this->known(each.id);
        auto& shown = *known.shown;
        known.run = std::move(each.run);
        shown.setText(each.text);
        const auto named = namedWithKeys(each.text, each.keys);
        const auto told = each.hint.isEmpty() ? named : named + QLatin1Char{'\n'} + each.hint;
        shown.setToolTip(each.whyNot.isEmpty() ? told : each.whyNot);
        // Unlike a text, an icon that is set once more has everything that follows the action do so anew.
        if (!each.glyph.isEmpty() && (each.glyph != known.glyph || each.ink != known.ink)) {
            known.glyph = each.glyph;
            known.ink = each.ink;
            shown.setIcon(Icon::of(each.glyph, each.ink));
        }
        if (shown.shortcuts() != each.keys)
            shown.setShortcuts(each.keys);
        shown.setCheckable(each.isOn.has_value());
        shown.setChecked(each.isOn.value_or(false));
        shown.setVisible(each.isOffered);
        shown.setEnabled(each.isOffered && each.whyNot.isEmpty());
    }
}

QAction* ActionSet::operator[](const QString& id) const
{
    const auto found = m_known.find(id);
    require(found != m_known.end(), "an action was presented before it is asked for");
    return found->second.shown;
}

void ActionSet::fill(QMenu& menu, const QList<QString>& ids) const
{
    for (const auto& id : ids) {
        if (id.isEmpty())
            menu.addSeparator();
        else
            menu.addAction((*this)[id]);
    }
}

ActionSet::Known& ActionSet::known(const QString& id)
{
    auto& known = m_known[id];
    if (known.shown)
        return known;
    known.shown = new QAction(this);
    known.shown->setObjectName(id);
    m_page->addAction(known.shown);
    connect(known.shown, &QAction::triggered, this, [this, id] {
        const auto run = m_known[id].run; // it may present the actions anew
        if (run)
            run();
    });
    return known;
}
