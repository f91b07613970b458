#include "LedgerUI/Components/Buttons/SpokenRole.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>

namespace {

constexpr auto mark = "spokenAsRadioButton";
constexpr auto roleMark = "spokenAs"; // of a plain widget

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
    if (auto* const button = qobject_cast<QAbstractButton*>(object); button && button->property(mark).toBool())
        return new RadioInterface{button};
    auto* const plain = qobject_cast<QWidget*>(object);
    const auto role = plain ? plain->property(roleMark) : QVariant{};
    return role.isValid() ? new QAccessibleWidget{plain, static_cast<QAccessible::Role>(role.toInt())} : nullptr;
}

void installOnce()
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceFor);
        return true;
    }();
}

}

void speakAsRadioButton(QAbstractButton& button)
{
    installOnce();
    button.setProperty(mark, true);
    QObject::connect(&button, &QAbstractButton::toggled, &button, [&button] {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event{&button, changed};
        QAccessible::updateAccessibility(&event);
    });
}

void speakAsGroup(QWidget& panel)
{
    installOnce();
    panel.setProperty(roleMark, static_cast<int>(QAccessible::Grouping));
}

void speakAsPicture(QWidget& picture)
{
    installOnce();
    picture.setProperty(roleMark, static_cast<int>(QAccessible::Graphic));
}
