#include "LedgerUI/Components/Buttons/RadioRole.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>

namespace {

constexpr auto mark = "spokenAsRadioButton";

class RadioInterface final : public QAccessibleWidget {
public:
    explicit RadioInterface(QAbstractButton* button) : QAccessibleWidget{button, QAccessible::RadioButton} {}

    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = button().isChecked();
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const auto named = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && named.isEmpty() ? button().text() : named;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override
    {
        if (name == pressAction() && button().isEnabled())
            button().click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] QAbstractButton& button() const { return *static_cast<QAbstractButton*>(object()); }
};

QAccessibleInterface* interfaceFor(const QString& /*className*/, QObject* object)
{
    auto* const button = qobject_cast<QAbstractButton*>(object);
    return button && button->property(mark).toBool() ? new RadioInterface{button} : nullptr;
}

}

void speakAsRadioButton(QAbstractButton& button)
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceFor);
        return true;
    }();
    button.setProperty(mark, true);
    QObject::connect(&button, &QAbstractButton::toggled, &button, [&button] {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event{&button, changed};
        QAccessible::updateAccessibility(&event);
    });
}
